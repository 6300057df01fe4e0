// The one main() of all test programs: GoogleTest under a Qt application on the platform of the environment.

#include <QApplication>
#include <QLocale>
#include <gtest/gtest.h>

namespace {

QtMessageHandler printMessage = nullptr;

// The unseen display cannot raise or size windows, and says so with every window; that would bury what matters.
void PrintUnlessOfDisplay(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    if (!message.startsWith(QLatin1String("This plugin does not support ")))
        printMessage(type, context, message);
}

} // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    printMessage = qInstallMessageHandler(PrintUnlessOfDisplay);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
