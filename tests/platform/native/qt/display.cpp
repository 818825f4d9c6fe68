// The display that the tests of the visible half run on, for all of them.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <csignal>
#include <fstream>

#include "platform/native/qt/display.h"

namespace
{

QtMessageHandler usualHandler;

// The offscreen display says each time what a display of its kind does not do.
void TellAllButWhatOffscreenLacks(QtMsgType type, const QMessageLogContext &context,
                                  const QString &text)
{
    if (!text.startsWith(QLatin1String("This plugin does not support ")))
        usualHandler(type, context, text);
}

// The application is made once: Qt does not like another. The screen begins elsewhere than the
// desktop, as a primary one beside another may, so that a place that counts from the wrong corner
// is seen.
struct Display : testing::Environment {
    QTemporaryDir folder;

    void SetUp() override
    {
        const QByteArray screens = folder.filePath("screens.json").toLocal8Bit();
        std::ofstream(screens.constData()) << R"({"screens": [
            {"name": "primary", "x": 300, "y": 100, "width": 1000, "height": 800}]})";
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens);
        static char name[] = "qt_tests";
        static char *arguments[] = {name, nullptr};
        static int count = 1;
        // A run in the background ignores them, and what is ignored stays so.
        for (const int number : {SIGHUP, SIGINT})
            signal(number, SIG_DFL);
        usualHandler = qInstallMessageHandler(TellAllButWhatOffscreenLacks);
        AttachDisplay(&count, arguments);
    }

    void TearDown() override
    {
        DetachDisplay();
    }
};

const auto *const display = testing::AddGlobalTestEnvironment(new Display);

} // namespace
