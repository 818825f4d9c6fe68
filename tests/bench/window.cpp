// What the window takes to show what the user asks for, from the request to the end of the painting
// that shows it, in milliseconds.
//   bench_window open FILE  opening the file as the first
//   bench_window [RUNS]     selecting a picture of 4096 x 4096 pixels of 32 bits, each run's
#include "platform/native/qt/display.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "shell/start.h"
#include "tests/support/real_window.h"

#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace
{

// Tells when a widget has been painted.
class PaintWatch : public QObject
{
  public:
    explicit PaintWatch(QWidget *widget) : watched(widget)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (object == watched && event->type() == QEvent::Paint)
            isPainted = true;
        return false;
    }

    // The painting goes on to the screen within the same step of Qt's events.
    void Wait()
    {
        while (!isPainted) {
            MSG message;
            if (WaitForMessage(&message) == Taken::Message)
                DispatchMessageA(&message);
        }
    }

  private:
    QWidget *watched;
    bool isPainted = false;
};

double MillisecondsUntilPainted(QWidget *widget, const std::function<void()> &request)
{
    RunUntilIdle(20);
    PaintWatch watch(widget);
    const auto start = std::chrono::steady_clock::now();
    request();
    watch.Wait();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

void Open(const std::string &path)
{
    SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, reinterpret_cast<LPARAM>(path.c_str()));
}

} // namespace

int main(int count, char **arguments)
{
    const int runs = count > 1 ? atoi(arguments[1]) : 11; // none of "open"
    // The host module is found from the build folder.
    std::filesystem::current_path(
        std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path());
    int qtArguments = 1;
    AttachDisplay(&qtArguments, arguments);
    char nothing[] = "";
    if (!StartUp(GetModuleHandleA(nullptr), nothing, SW_SHOWNORMAL))
        return 1;
    const QTemporaryDir folder;
    const std::string path = folder.filePath("picture.dll").toStdString();
    const Bytes dib = MakeDib(MakePicture(4096, 4096, 0xff336699), 32);
    if (!WriteBytes(path.c_str(), BuildPe({.resources = {{2, 1, dib}}}).bytes))
        return 1;
    const std::string opened = count > 2 ? arguments[2] : path;
    const double opening = MillisecondsUntilPainted(Tree()->viewport(), [&] { Open(opened); });
    if (count > 2)
        printf("%.1f\n", opening);
    RunUntilIdle(20);
    PressKey(Tree(), Qt::Key_Home);
    PressKey(Tree(), Qt::Key_Right);
    for (int run = 0; run < runs; run++) {
        PressKey(Tree(), Qt::Key_Home);
        printf("%.1f\n", MillisecondsUntilPainted(WidgetWithId(IDC_PANE),
                                                  [] { PressKey(Tree(), Qt::Key_Down); }));
    }
    DestroyWindow(globals.mainWindow);
    ShutDown();
    DetachDisplay();
    return 0;
}
