#include "tests/support/Sandbox.h"

#include <QApplication>

#include <gmock/gmock.h>

namespace {

void setUnlessSet(const char* variable, const QByteArray& value)
{
    if (!qEnvironmentVariableIsSet(variable))
        qputenv(variable, value);
}

/// A test machine has no graphics card to speak of: pages are drawn by the processor, and so is what shows them.
void drawInSoftware()
{
    setUnlessSet("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu");
    setUnlessSet("QT_QUICK_BACKEND", "software");
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    orvane::test::readSeed(argc, argv);
    const orvane::test::Sandbox sandbox;
    drawInSoftware();
    // The web engine asks for this before the application is there.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
