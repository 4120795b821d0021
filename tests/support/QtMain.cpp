// GoogleTest under a Qt application.
#include "tests/support/OwnHome.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const health::test::OwnHome home;
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
