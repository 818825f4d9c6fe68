// What the user does in each kind of window and control, as the messages that come of it: the text
// beside this file tells them.
#include <gtest/gtest.h>

#include <QMimeData>
#include <csignal>
#include <map>

#include "platform/native/qt/frames.h"
#include "platform/native/user/window_table.h"
#include "platform/win32.h"
#include "tests/support/loops.h"
#include "tests/support/real_window.h"
#include "tests/support/transcript.h"

static std::vector<std::string> told;
static std::string heard; // since the last line

// Their place, and their bytes as numbers where they are no ASCII.
static std::string PathsIn(HDROP drop)
{
    const POINT place = ((const DROPFILES *)GlobalLock((HGLOBAL)drop))->pt;
    std::string paths = " at " + std::to_string(place.x) + "," + std::to_string(place.y);
    char path[6]; // the longest is cut
    for (UINT i = 0; DragQueryFileA(drop, i, nullptr, 0) > 0; ++i) {
        DragQueryFileA(drop, i, path, 0); // which has no room
        paths += " " + std::to_string(DragQueryFileA(drop, i, path, sizeof path));
        paths += " " + Described(Text(path));
    }
    DragFinish(drop);
    return paths + (DragQueryFileA(drop, 0, nullptr, 0) > 0 ? " kept" : "");
}

static LRESULT CALLBACK Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    static const std::map<UINT, const char *> names = {
        {WM_LBUTTONDOWN, "left press"}, {WM_LBUTTONUP, "release"},    {WM_MOUSEMOVE, "move"},
        {WM_LBUTTONDBLCLK, "double"},   {WM_RBUTTONDOWN, "right"},    {WM_KEYDOWN, "key"},
        {WM_SETFOCUS, "gets keys"},     {WM_KILLFOCUS, "loses keys"}, {WM_SYSCOMMAND, "system"},
        {WM_COMMAND, "command"},        {WM_NOTIFY, "told"},          {WM_SIZE, "size"},
        {WM_PARENTNOTIFY, "inside"},    {WM_DROPFILES, "dropped"}};
    if (names.contains(message)) {
        heard += "; " + WindowOf(window)->text + " " + names.at(message);
        if (message == WM_NOTIFY)
            heard += " " + std::to_string((int)((const NMHDR *)lParam)->code);
        else if (message == WM_DROPFILES)
            heard += PathsIn((HDROP)wParam);
        else if (message != WM_SETFOCUS && message != WM_KILLFOCUS)
            heard += " " + std::to_string(wParam);
        if (message != WM_COMMAND && message != WM_NOTIFY && message != WM_DROPFILES)
            heard += " " + std::to_string((short)LOWORD(lParam)) + "," +
                     std::to_string((short)HIWORD(lParam));
    }
    return message == WM_SYSCOMMAND ? 0 : DefWindowProcA(window, message, wParam, lParam);
}

static void Tell(const std::string &what)
{
    RunUntilIdle(10);
    told.push_back(what + heard);
    heard.clear();
}

static void TellMouse(QWidget *widget, const std::string &name)
{
    const std::pair<QEvent::Type, const char *> types[] = {{QEvent::MouseMove, "move"},
                                                           {QEvent::MouseButtonPress, "press"},
                                                           {QEvent::MouseButtonRelease, "release"},
                                                           {QEvent::MouseButtonDblClick, "double"},
                                                           {QEvent::MouseButtonRelease, "release"}};
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        for (const auto &[type, done] : types) {
            SendMouse(widget, type, {12, 7}, button);
            Tell(name + ", " + done + " " + std::to_string(button));
        }
    for (const auto reason : {QContextMenuEvent::Keyboard, QContextMenuEvent::Mouse}) {
        QContextMenuEvent event(reason, {3, 4}, {5, 6});
        QApplication::sendEvent(widget, &event);
        Tell(name + ", menu " + std::to_string(reason));
    }
}

static void TellKeys(QWidget *widget, const std::string &name)
{
    widget->setFocus();
    Tell(name + ", focus");
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_A, Qt::Key_Down, Qt::Key_Escape}) {
        PressKey(widget, key);
        Tell(name + ", key " + QKeySequence(key).toString().toStdString());
    }
    PressKey(widget, Qt::Key_F10, Qt::ControlModifier);
    PressKey(widget, Qt::Key_A, Qt::ShiftModifier);
    Tell(name + ", other keys");
    PressKey(widget, Qt::Key_F10, Qt::ShiftModifier);
    Tell(name + ", shift F10");
}

static void TellDrop(HWND window, const char *address)
{
    QMimeData data;
    data.setUrls({QUrl(QLatin1String(address)), QUrl("file:///second")});
    QDragEnterEvent enter({50, 60}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(FrameShowing(window), &enter);
    QDropEvent drop({50, 60}, Qt::CopyAction, &data, Qt::LeftButton, {});
    drop.ignore();
    QApplication::sendEvent(FrameShowing(window), &drop);
    Tell(std::string("drop ") + address + (enter.isAccepted() ? ", taken" : ", refused") +
         (drop.isAccepted() ? ", taken" : ", refused"));
}

TEST(QtEvents, BringTheMessagesThatTheirTextTells)
{
    WNDCLASSA listener = {};
    listener.lpfnWndProc = Hear;
    listener.lpszClassName = "Listener";
    listener.style = CS_DBLCLKS;
    ASSERT_TRUE(RegisterClassA(&listener));
    const auto make = [](const char *kind, const char *text, DWORD style, RECT place, HWND parent) {
        static int id = 0;
        const intptr_t number = style & WS_CHILD ? ++id : 0;
        return CreateWindowExA(0, kind, text, style | WS_VISIBLE, place.left, place.top,
                               place.right, place.bottom, parent, (HMENU)number, nullptr, nullptr);
    };
    HWND main = make("Listener", "main", WS_OVERLAPPEDWINDOW, {40, 50, 420, 330}, nullptr);
    Tell("start");
    const struct {
        const char *kind, *text;
        DWORD style;
        RECT place;
    } controls[] = {{"Listener", "inner", WS_BORDER, {10, 10, 100, 50}},
                    {"button", "push", 0, {120, 10, 60, 20}},
                    {"button", "drawn", BS_OWNERDRAW, {120, 40, 60, 20}},
                    {"static", "text", 0, {120, 70, 60, 20}},
                    {WC_TREEVIEWA, "tree", WS_BORDER, {10, 100, 200, 200}}};
    for (const auto &c : controls) {
        HWND control = make(c.kind, c.text, c.style | WS_CHILD, c.place, main);
        if (c.kind == std::string(WC_TREEVIEWA))
            InsertItem(control, "below", InsertItem(control, "top"));
        RunUntilIdle();
        QWidget *widget = WidgetOf(control);
        auto *tree = dynamic_cast<QTreeView *>(widget);
        TellMouse(tree ? tree->viewport() : widget, c.text);
        TellKeys(widget, c.text);
        if (tree) {
            for (const int key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_Down}) {
                PressKey(tree, key);
                Tell("tree, key");
            }
            told.push_back(tree->currentIndex().data().toString().toStdString());
            SendMessageA(control, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
            Tell("emptied");
        }
    }
    WidgetOf(main)->setFocus();
    TellMouse(WidgetOf(main), "main");
    TellDrop(main, "file:///a");
    DragAcceptFiles(main, TRUE);
    for (const char *address : {"file:///a", "file:///%41%FF%20b", "https://b/c", "file://host/d"})
        TellDrop(main, address);
    TakeInput(main, false);
    TellDrop(main, "file:///a");
    TakeInput(main, true);
    FrameWidget *frame = FrameShowing(main);
    frame->close();
    Tell("close");
    frame->resize(300, 200);
    Tell("resize");
    frame->move(400, 300);
    RECT place;
    GetWindowRect(main, &place);
    Tell("move to " + std::to_string(place.left) + "," + std::to_string(place.top));
    for (LPCSTR name : {IDC_WAIT, IDC_WAIT, IDC_ARROW, IDC_ARROW}) {
        SetCursor(LoadCursorA(nullptr, name));
        const QCursor *cursor = QApplication::overrideCursor();
        told.push_back("cursor " + std::to_string(cursor ? cursor->shape() : -1));
    }
    HWND owned = make("Listener", "owned", WS_POPUP | WS_CAPTION, {90, 90, 80, 80}, main);
    Tell("another window that it owns");
    for (const int number : {SIGHUP, SIGINT}) {
        raise(number);
        Tell("signal " + std::to_string(number));
        EXPECT_EQ(signal(number, SIG_DFL), SIG_DFL); // another ends it at once
    }
    for (HWND window : {owned, main}) {
        ShowWindow(window, SW_HIDE);
        Tell("hide");
        DestroyWindow(window);
        Tell("end");
    }
    UnregisterClassA("Listener", nullptr);
    ExpectTold(told, QT_FOLDER "/events.txt", TOLD_FOLDER "/events.told.txt");
}
