#include "tests/support/Sandbox.h"

#include <QGuiApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    orvane::test::readSeed(argc, argv);
    const orvane::test::Sandbox sandbox;
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
