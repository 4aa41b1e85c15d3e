#include "toolkit/Accessible.h"

#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Noto Sans CJK JP")));
    tensio::installAccessibility();
    return RUN_ALL_TESTS();
}
