// What the window takes to show what the user asks for, from the request to the end of the painting
// that shows it, in milliseconds.
//   bench_window [RUNS]     the medians of everything
//   bench_window open FILE  of opening the file as the first
#include "platform/native/qt/display.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "shell/start.h"
#include "tests/support/real_window.h"

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace
{

int runs = 11;

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

void Measure(const char *what, QWidget *widget, const std::function<void()> &prepare,
             const std::function<void()> &request)
{
    std::vector<double> times;
    for (int i = 0; i < runs; i++) {
        prepare();
        times.push_back(MillisecondsUntilPainted(widget, request));
    }
    std::sort(times.begin(), times.end());
    printf("%-44s %7.1f  (%.1f to %.1f)\n", what, times[times.size() / 2], times.front(),
           times.back());
}

void Open(const std::string &path)
{
    SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, reinterpret_cast<LPARAM>(path.c_str()));
}

void Close()
{
    SendMessageA(globals.mainWindow, WM_COMMAND, IDM_CLOSE, 0);
}

void MeasureMany(const std::string &path)
{
    QWidget *shown = Tree()->viewport();
    Measure("open 64,000 resources again", shown, Close, [&] { Open(path); });
    const auto openAgain = [&] {
        Close();
        Open(path);
        RunUntilIdle(20);
        PressKey(Tree(), Qt::Key_Home);
    };
    Measure("expand them", shown, openAgain, [] { PressKey(Tree(), Qt::Key_Right); });
    Measure(
        "go to their end", shown, [] { PressKey(Tree(), Qt::Key_Home); },
        [] { PressKey(Tree(), Qt::Key_End); });
}

int End()
{
    DestroyWindow(globals.mainWindow);
    ShutDown();
    DetachDisplay();
    return 0;
}

std::string WriteFile(const QTemporaryDir &folder, const char *name,
                      const ExecutableDescription &description)
{
    const std::string path = folder.filePath(QString::fromUtf8(name)).toStdString();
    if (!WriteBytes(path.c_str(), BuildPe(description).bytes))
        exit(1);
    return path;
}

} // namespace

int main(int count, char **arguments)
{
    if (count > 1)
        runs = std::max(1, atoi(arguments[1]));
    // The host module is found from the build folder.
    std::filesystem::current_path(
        std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path());
    int qtArguments = 1;
    AttachDisplay(&qtArguments, arguments);
    char nothing[] = "";
    if (!StartUp(GetModuleHandleA(nullptr), nothing, SW_SHOWNORMAL))
        return 1;
    if (count > 2) {
        printf("%.1f\n", MillisecondsUntilPainted(Tree()->viewport(), [&] { Open(arguments[2]); }));
        return End();
    }
    QTemporaryDir folder;
    ExecutableDescription many;
    for (int i = 1; i <= 64000; i++)
        many.resources.push_back({10, i, Bytes(100, 0x41)});
    MeasureMany(WriteFile(folder, "many.dll", many));

    Bytes dib = MakeDib(MakePicture(4096, 4096, 0xff336699), 32);
    Open(WriteFile(folder, "picture.dll", {{{2, 1, dib}}}));
    RunUntilIdle(20);
    PressKey(Tree(), Qt::Key_Home);
    PressKey(Tree(), Qt::Key_Right);
    Measure(
        "select a picture of 4096 x 4096, 32 bits", WidgetWithId(IDC_PANE),
        [] { PressKey(Tree(), Qt::Key_Home); }, [] { PressKey(Tree(), Qt::Key_Down); });
    return End();
}
