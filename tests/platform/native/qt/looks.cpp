// What every window and dialog is made of on the display: the text beside this file tells each
// widget, its place in its parent, its text and its state.
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QTimer>
#include <filesystem>
#include <functional>

#include "dialogs/message.h"
#include "platform/native/user/window_table.h"
#include "shell/start.h"
#include "tests/support/real_window.h"
#include "tests/support/transcript.h"

using Lines = std::vector<std::string>;

static void TellWidget(Lines *told, QWidget *widget, const std::string &indent)
{
    const QRect place = widget->isWindow() ? QRect({0, 0}, widget->size()) : widget->geometry();
    const QString text = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    std::string line = indent + widget->metaObject()->className();
    for (const int value : {place.x(), place.y(), place.width(), place.height()})
        line += " " + std::to_string(value);
    line += " \"" + text.toStdString() + "\"";
    line += std::string(widget->isVisible() ? "" : " hidden") +
            (widget->isEnabled() ? "" : " disabled") + (widget->hasFocus() ? " focus" : "") +
            (widget->palette().color(QPalette::Base).lightness() < 128 ? " dark" : "");
    told->push_back(line);
    for (const QAction *action : widget->actions())
        told->push_back(indent + "  item \"" + action->text().toStdString() + "\"" +
                        (action->isEnabled() ? "" : " gray"));
    if (!dynamic_cast<QAbstractScrollArea *>(widget))
        for (QObject *child : widget->children())
            if (auto *inner = dynamic_cast<QWidget *>(child))
                TellWidget(told, inner, indent + "  ");
}

// Gives the command, tells what it brings to the front, and confirms a dialog with its OK.
static void TellWhatComes(Lines *told, const char *heading, const std::function<void()> &command)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget *menu = QApplication::activePopupWidget();
        QWidget *front = menu ? menu : QApplication::activeModalWidget();
        if (!front)
            return;
        timer.stop();
        told->push_back(heading);
        TellWidget(told, front, "  ");
        if (menu)
            menu->close();
        else
            SendMessageA(TopLevelWindows().back(), WM_COMMAND, IDOK, 0);
    });
    timer.start(20);
    command();
    RunUntilIdle();
}

TEST(QtLooks, AreWhatTheirTextTells)
{
    // The host module lies beside the program.
    std::filesystem::current_path(
        std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path());
    // A dark desktop darkens its menus, not what the program draws.
    QApplication::setPalette(QPalette(QColor(40, 40, 40)));
    char none[] = "";
    ASSERT_TRUE(StartUp(GetModuleHandleA(nullptr), none, SW_SHOWNORMAL));
    RunUntilIdle();
    Lines told = {"The window:"};
    TellWidget(&told, WidgetOf(globals.mainWindow)->window(), "  ");
    TellWhatComes(&told, "The About box:", [] {
        SendMessageA(globals.mainWindow, WM_COMMAND, IDM_ABOUT, 0);
    });
    TellWhatComes(&told, "A message:", [] { ShowMessage(globals.mainWindow, "One line."); });
    const std::string lines = std::string(200, 'x') + " y\n\nz";
    for (const UINT icon : {0u, (UINT)MB_ICONINFORMATION})
        for (const char *text : {"One line.", lines.c_str()})
            TellWhatComes(&told, "A message box:", [&] {
                MessageBoxA(globals.mainWindow, text, "Message", icon);
            });
    DestroyWindow(globals.mainWindow);
    ShutDown();
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0))
        DispatchMessageA(&message);
    QApplication::setPalette(QPalette());
    ExpectTold(told, QT_FOLDER "/looks.txt", TOLD_FOLDER "/looks.told.txt");
}
