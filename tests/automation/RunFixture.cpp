#include "tests/automation/RunFixture.h"

#include "mastering/WatermarkSettings.h"

#include <QDir>

#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

QString RunFixture::title(int position) const
{
    return service.tracks().at(position).title;
}

void RunFixture::useFolder(const QStringList& names)
{
    choices.source = RunSource::folder;
    for (const QString& name : names)
        write(name, recording());
}

void RunFixture::only(Stage stage)
{
    choices.rename = stage == Stage::rename;
    choices.tag = stage == Stage::tag;
    choices.master = stage == Stage::master;
}

void RunFixture::useWatermark()
{
    write(u"../drop.mp3"_s, recording());
    const Master::Watermark watermark{
        .isOn = true, .file = home.filePath(u"drop.mp3"_s), .level = -12, .placement = Master::placementForTag(0)};
    WatermarkSettings::store(preferences, u"auto"_s, watermark);
}

void RunFixture::removeFile(const QString& name) const
{
    EXPECT_TRUE(QFile::remove(path(name)));
}

void RunFixture::removeFolder() const
{
    EXPECT_TRUE(QDir(folder()).removeRecursively());
}

std::string RunFixture::tagOf(const QString& name, const char* frame) const
{
    TagLib::MPEG::File file(qPrintable(path(name)));
    const auto& frames = file.ID3v2Tag()->frameListMap()[frame];
    return frames.isEmpty() ? std::string() : frames.front()->toString().to8Bit(true);
}

} // namespace orvane::test
