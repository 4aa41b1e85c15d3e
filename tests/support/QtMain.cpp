#include "support/RuntimeFolder.h"
#include "toolkit/Look.h"

#include <QApplication>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace {

// What a machine without a screen or a printer cannot do.
constexpr std::array<char const*, 5> inherent {
    "QPageSetupDialog: Cannot be used on non-native printers",
    "This plugin does not support propagateSizeHints()", "This plugin does not support raise()",
    "This plugin does not support grabbing the keyboard",
    "This plugin does not support QPlatformServices::openDocument() for 'file:///'."};

void failOnWarning(QtMsgType type, QMessageLogContext const&, QString const& message)
{
    bool const isAllowed = type == QtDebugMsg || type == QtInfoMsg
        || std::ranges::count(inherent, message.toStdString()) > 0;
    if (!isAllowed)
        ADD_FAILURE() << message.toStdString();
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    tensio::RuntimeFolder const folder;
    qInstallMessageHandler(failOnWarning);
    QApplication application(argc, argv);
    tensio::applyLook(application);
    return RUN_ALL_TESTS();
}
