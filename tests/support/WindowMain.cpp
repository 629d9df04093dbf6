#include "main/Chrome/Theme.h"
#include "tests/support/Sandbox.h"

#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    orvane::test::readSeed(argc, argv);
    const orvane::test::Sandbox sandbox;
    QApplication application(argc, argv);
    orvane::Theme::apply(application);
    return RUN_ALL_TESTS();
}
