// Draws what the program shows to a PNG file, with no display:
//   draw_window OUT.png WHAT [FILE [INDEX]]
// FILE is opened first, and its resource INDEX, counted in the order of quillmoor-cli list --json,
// is selected. WHAT is one of
//   window         the main window
//   pane           the display pane alone
//   about          the About box
//   message:ID     the message dialog with that text of the string table
//   box:ID         the system's message box with that text
//   menu:N         the window with its menu N opened, from 0 on
//   context:tree   the context menus
//   context:pane
//   open, save     the file choosers
#include "dialogs/message.h"
#include "exe/catalog.h"
#include "platform/native/comctl/tree.h"
#include "platform/native/qt/display.h"
#include "program/texts.h"
#include "shell/main_window.h"
#include "shell/start.h"
#include "tests/support/real_window.h"

#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

static int status = 1;

static void SaveGrab(QWidget *widget, const std::string &out)
{
    if (widget->grab().save(QString::fromStdString(out), "PNG"))
        status = 0;
    else
        fprintf(stderr, "draw_window: %s cannot be written.\n", out.c_str());
}

// What shows above the main window; NULL while nothing does.
static QWidget *FrontWidget()
{
    if (QApplication::activePopupWidget())
        return QApplication::activePopupWidget();
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget != WidgetOf(globals.mainWindow)->window())
            return widget;
    return nullptr;
}

// Saves the picture of what comes up above the main window, once it has had time to paint itself,
// and ends it and the program.
static void SaveFrontWidgetLater(const std::string &out)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, out, ticks = 0]() mutable {
        QWidget *front = FrontWidget();
        if (!front || ++ticks < 10)
            return;
        timer->stop();
        SaveGrab(front, out);
        if (auto *dialog = dynamic_cast<QDialog *>(front))
            dialog->reject();
        PostQuitMessage(0);
    });
    timer->start(20);
}

// Goes down the opened tree to the item with that value.
static bool SelectIndex(LONG index)
{
    const HWND tree = GetDlgItem(globals.mainWindow, IDC_TREE);
    Tree()->expandAll();
    PressKey(Tree(), Qt::Key_Home);
    for (LONG items = openCatalog.count + 4; items > 0; items--) {
        TVITEMA item = {};
        item.mask = TVIF_PARAM;
        item.hItem = TreeSelection(tree);
        if (SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) &&
            static_cast<LONG>(item.lParam) == index)
            return true;
        PressKey(Tree(), Qt::Key_Down);
    }
    return false;
}

static void SendCommand(UINT id)
{
    SendMessageA(globals.mainWindow, WM_COMMAND, id, 0);
}

static void OpenContextMenu(int id)
{
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(WidgetWithId(id), &asked);
    RunUntilIdle();
}

static void OpenMenu(int number)
{
    auto *bar = WidgetOf(globals.mainWindow)->window()->findChild<QMenuBar *>();
    QAction *action = bar->actions().value(number);
    if (!action)
        return;
    bar->setActiveAction(action);
    MSG message;
    while (FrontWidget() && GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
}

// Draws WHAT. Returns false for a word that is none.
static bool Draw(const std::string &what, const std::string &out)
{
    const size_t colon = what.find(':');
    const std::string word = what.substr(0, colon);
    const std::string rest = colon == std::string::npos ? "" : what.substr(colon + 1);
    if (word == "window" || word == "pane") {
        SaveGrab(word == "pane" ? WidgetWithId(IDC_PANE) : WidgetOf(globals.mainWindow)->window(),
                 out);
        return true;
    }
    SaveFrontWidgetLater(out);
    const UINT number = static_cast<UINT>(strtoul(rest.c_str(), nullptr, 10));
    if (word == "about")
        SendCommand(IDM_ABOUT);
    else if (word == "message")
        ShowMessage(globals.mainWindow, LoadMessageText(number));
    else if (word == "box")
        MessageBoxA(globals.mainWindow, LoadMessageText(number), "Message", MB_ICONINFORMATION);
    else if (word == "menu")
        OpenMenu(static_cast<int>(number));
    else if (word == "context")
        OpenContextMenu(rest == "pane" ? IDC_PANE : IDC_TREE);
    else if (word == "open")
        SendCommand(IDM_OPEN);
    else if (word == "save")
        SendCommand(IDM_SAVE_AS);
    else
        return false;
    return true;
}

static int Run(const std::string &out, const std::string &what, std::string file, const char *index)
{
    if (!StartUp(GetModuleHandleA(nullptr), file.data(), SW_SHOWNORMAL))
        return 1;
    RunUntilIdle(20);
    if (index && !SelectIndex(static_cast<LONG>(strtol(index, nullptr, 10))))
        fprintf(stderr, "draw_window: There is no resource %s.\n", index);
    else if (RunUntilIdle(20); !Draw(what, out))
        fprintf(stderr, "draw_window: What is \"%s\"? See the top of draw_window.cpp.\n",
                what.c_str());
    DestroyWindow(globals.mainWindow);
    ShutDown();
    return status;
}

int main(int count, char **arguments)
{
    if (count < 3 || count > 5) {
        fprintf(stderr,
                "draw_window OUT.png WHAT [FILE [INDEX]]; see the top of draw_window.cpp.\n");
        return 2;
    }
    const std::string out = std::filesystem::absolute(arguments[1]).string();
    const std::string file = count > 3 ? std::filesystem::absolute(arguments[3]).string() : "";
    // The host module is found from the build folder.
    std::filesystem::current_path(
        std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    int qtArguments = 1;
    AttachDisplay(&qtArguments, arguments);
    Run(out, arguments[2], file, count > 4 ? arguments[4] : nullptr);
    DetachDisplay();
    return status;
}
