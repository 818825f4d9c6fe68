// What every window and dialog is made of on the display: the text beside this file tells each
// widget, its place in its parent, its text and its state.
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <typeinfo>

#include "dialogs/message.h"
#include "platform/native/qt/controls.h"
#include "platform/native/user/window_table.h"
#include "samples/builder/builder.h"
#include "shell/start.h"
#include "tests/support/real_window.h"
#include "tests/support/transcript.h"

using Lines = std::vector<std::string>;

// What is drawn: the colour of most pixels, and the rectangle that the others take; of a picture,
// which has no letters in it, a sum as well.
static std::string Drawing(const QImage &image, bool isPicture)
{
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    const QRgb ground = std::max_element(counts.begin(), counts.end(), [](auto &a, auto &b) {
                            return a.second < b.second;
                        })->first;
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != ground)
                ink |= QRect(x, y, 1, 1);
    const QString told = QStringLiteral(" on %1 drawn %2 %3 %4 %5")
                             .arg(ground & 0xFFFFFF, 6, 16, QLatin1Char('0'))
                             .arg(ink.x())
                             .arg(ink.y())
                             .arg(ink.width())
                             .arg(ink.height());
    const auto bytes = QByteArrayView(image.constBits(), image.sizeInBytes());
    return told.toStdString() + (isPicture ? " sum " + std::to_string(qChecksum(bytes)) : "");
}

static std::string DrawingOf(QWidget *widget, bool isPicture)
{
    if (widget->isWindow() && widget->isVisible())
        return " icon" + Drawing(widget->windowIcon().pixmap(32).toImage(), true);
    // Others are drawn by the desktop's style.
    if (!widget->isVisible() || typeid(*widget) != typeid(SurfaceWidget))
        return "";
    QImage image(widget->size(), QImage::Format_RGB32);
    widget->render(&image, {}, {}, QWidget::DrawWindowBackground);
    return Drawing(image, isPicture);
}

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
            (widget->palette().color(QPalette::Base).lightness() < 128 ? " dark" : "") +
            DrawingOf(widget, text == QLatin1String("Picture"));
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
        if (!front || (!menu && !front->isAncestorOf(QApplication::focusWidget())))
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

// A control of a dialog's template, of one of the system's classes by its number, 12 units high.
static Bytes Control(DWORD style, int y, int number, std::string_view text)
{
    Bytes bytes;
    AddU32(bytes, WS_CHILD | WS_VISIBLE | style);
    AddU32(bytes, 0);
    for (const int word : {8, y, 60, 12, 100 + y, 0xFFFF, number})
        AddU16(bytes, (unsigned)word);
    for (const char letter : text)
        AddU16(bytes, (unsigned char)letter);
    AddU32(bytes, 0);
    return bytes;
}

static INT_PTR CALLBACK EndAtOk(HWND dialog, UINT message, WPARAM, LPARAM)
{
    return message == WM_COMMAND ? EndDialog(dialog, 1) : message == WM_INITDIALOG;
}

// A dialog of somebody else's module, with every kind of control.
static void ShowEveryControl()
{
    Bytes dialog;
    AddU32(dialog, WS_POPUP | WS_CAPTION | DS_MODALFRAME);
    AddU32(dialog, 0);
    for (const int word : {9, 0, 0, 90, 160, 0, 0, 0})
        AddU16(dialog, (unsigned)word);
    for (const Bytes &control :
         {Control(7, 0, 0x80, "A group"), Control(7, 18, 0x80, ""),
          Control(1 | WS_TABSTOP, 36, 0x80, "&Yes"), Control(WS_BORDER, 54, 0x81, ""),
          Control(0, 72, 0x81, ""), Control(1, 90, 0x82, "middle"),
          Control(2 | WS_BORDER, 108, 0x82, "end"), Control(2, 126, 0x85, ""),
          Control(WS_DISABLED, 144, 0x83, "")}) {
        PadTo(dialog, 4);
        AddBytes(dialog, control);
    }
    const QTemporaryDir folder;
    const std::string path = folder.filePath("somebody.dll").toStdString();
    const Bytes module = BuildPe({.resources = {{5, 1, dialog}}, .is64 = true}).bytes;
    std::ofstream(path, std::ios::binary).write((const char *)module.data(), (long)module.size());
    HMODULE loaded = LoadLibraryA(path.c_str());
    EXPECT_EQ(DialogBoxParamA(loaded, MAKEINTRESOURCEA(1), globals.mainWindow, EndAtOk, 0), 1);
    FreeLibrary(loaded);
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
    TellWhatComes(&told, "A dialog of somebody else:", ShowEveryControl);
    DestroyWindow(globals.mainWindow);
    ShutDown();
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0))
        DispatchMessageA(&message);
    QApplication::setPalette(QPalette());
    ExpectTold(told, QT_FOLDER "/looks.txt", TOLD_FOLDER "/looks.told.txt");
}
