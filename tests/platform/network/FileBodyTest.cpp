#include "platform/network/Body.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

class FileBody : public testing::Test
{
protected:
    static ResponseHead headOf(int status)
    {
        ResponseHead head;
        head.status = status;
        return head;
    }

    void put(const QByteArray& bytes) const
    {
        QFile file(path_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"x"_s);
    std::unique_ptr<Body> body_ = makeFileBody(path_);
    HttpResponse response_;
};

TEST_F(FileBody, anOlderFileIsGoneAsSoonAsAnotherStatusHasEnded)
{
    put("older");
    EXPECT_FALSE(body_->begin(headOf(404)));
    body_->finish(response_);
    EXPECT_FALSE(QFile::exists(path_));
}

TEST_F(FileBody, whatStandsThereAfterTheEndIsNotTouchedAgain)
{
    body_->begin(headOf(404));
    body_->finish(response_);
    put("newer");
    body_->abandon();
    body_.reset();
    EXPECT_TRUE(QFile::exists(path_));
}

TEST_F(FileBody, aWholeFileOutlivesItsBody)
{
    EXPECT_TRUE(body_->begin(headOf(200)));
    body_->write("the file");
    body_->finish(response_);
    EXPECT_EQ(response_.size, 8);
    body_->abandon();
    body_.reset();
    EXPECT_TRUE(QFile::exists(path_));
}

TEST_F(FileBody, aFileThatIsNotFinishedGoesWithItsBody)
{
    body_->begin(headOf(200));
    body_->write("half");
    EXPECT_TRUE(QFile::exists(path_));
    body_.reset();
    EXPECT_FALSE(QFile::exists(path_));
}

} // namespace
} // namespace orvane
