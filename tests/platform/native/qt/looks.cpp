// What every window and dialog is made of on the display: the text beside this file tells each
// widget, its place in its parent, its text and its state.
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <typeinfo>

#include "dialogs/message.h"
#include "platform/native/qt/controls.h"
#include "platform/native/qt/surfaces.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "shell/start.h"
#include "tests/support/real_window.h"
#include "tests/support/transcript.h"

using Lines = std::vector<std::string>;

// The text with a rectangle behind it.
static std::string Numbers(const QString &text, const QRect &rect)
{
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(text)
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height())
        .toStdString();
}

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
    const std::string told = Numbers(
        QStringLiteral(" on %1 drawn").arg(ground & 0xFFFFFF, 6, 16, QLatin1Char('0')), ink);
    const auto bytes = QByteArrayView(image.constBits(), image.sizeInBytes());
    return told + (isPicture ? " sum " + std::to_string(qChecksum(bytes)) : "");
}

// The rectangles that the system's colours take.
static std::string ColorsOf(const QImage &image)
{
    std::string told;
    for (const int index :
         {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_HIGHLIGHT}) {
        const QRgb color = SystemColor(index).rgb();
        QRect found;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) == color)
                    found |= QRect(x, y, 1, 1);
        if (!found.isEmpty())
            told += Numbers(QStringLiteral(" c%1").arg(index), found);
    }
    return told;
}

static std::string DrawingOf(QWidget *widget, bool isPicture)
{
    if (widget->isWindow() && widget->isVisible())
        return " icon" + Drawing(widget->windowIcon().pixmap(32).toImage(), true);
    const bool isSurface = typeid(*widget) == typeid(SurfaceWidget);
    const bool isTree = dynamic_cast<QTreeView *>(widget);
    // Others are drawn by the desktop's style.
    if (!widget->isVisible() || !(isSurface || isTree || typeid(*widget) == typeid(OverlayWidget)))
        return "";
    QImage image(widget->size(), QImage::Format_RGB32);
    image.fill(Qt::red);
    widget->render(&image, {}, {}, isTree ? QWidget::DrawChildren : QWidget::DrawWindowBackground);
    return (isSurface ? Drawing(image, isPicture) : "") + ColorsOf(image);
}

static std::string ColorsOf(const QPalette &palette)
{
    QString told;
    for (const auto group : {QPalette::Active, QPalette::Disabled})
        for (int role = 0; role < QPalette::NColorRoles; ++role)
            told += palette.color(group, static_cast<QPalette::ColorRole>(role)).name() + ' ';
    return told.toStdString();
}

// What a widget is for the mouse, the keyboard and readers of the screen, beyond its look.
static std::string TraitsOf(QWidget *widget)
{
    const QCursor cursor = widget->cursor();
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(widget);
    QString told = QStringLiteral(" cursor %1 %2 %3 tab %4 role %5")
                       .arg(cursor.shape())
                       .arg(cursor.hotSpot().x())
                       .arg(cursor.hotSpot().y())
                       .arg(widget->focusPolicy())
                       .arg(reader->role());
    if (reader->state().readOnly)
        told += QLatin1String(" read only");
    if (QAccessibleTextInterface *text = reader->textInterface()) {
        int selected[] = {9, 9}, alike[] = {9, 9};
        text->selection(0, &selected[0], &selected[1]);
        told += text->attributes(1, &alike[0], &alike[1]);
        told += QStringLiteral(" lines %1 \"%2\" selected %3 %4 %5 caret %6 alike %7 %8 letter %9")
                    .arg(reader->state().multiLine)
                    .arg(text->text(0, text->characterCount()))
                    .arg(text->selectionCount())
                    .arg(selected[0])
                    .arg(selected[1])
                    .arg(text->cursorPosition())
                    .arg(alike[0])
                    .arg(alike[1])
                    .arg(text->offsetAtPoint({1, 1}));
    }
    if (widget->isWindow())
        told += QStringLiteral(" at %1 %2 \"%3\" flags %4 modal %5 drops %6")
                    .arg(widget->x())
                    .arg(widget->y())
                    .arg(widget->windowHandle() ? widget->windowHandle()->title() : "")
                    .arg(static_cast<unsigned>(widget->windowFlags()), 0, 16)
                    .arg(widget->windowModality())
                    .arg(widget->acceptDrops());
    else if (typeid(*widget) == typeid(PushButtonWidget) || dynamic_cast<QTreeView *>(widget))
        told += QStringLiteral(" %1 font %2 %3")
                    .arg(widget->property("text").toString(), widget->font().family())
                    .arg(widget->font().pixelSize());
    return told.toStdString();
}

// The lines that show of a tree, with their pictures.
static void TellTree(Lines *told, const QTreeView *tree, const std::string &indent)
{
    for (QModelIndex line = tree->model()->index(0, 0); line.isValid();
         line = tree->indexBelow(line)) {
        std::string text = Numbers(line.data().toString(), tree->visualRect(line));
        text += " " + line.data(Qt::AccessibleDescriptionRole).toString().toStdString();
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) {
            const auto icon = line.data(Qt::DecorationRole).value<QIcon>();
            text += Drawing(icon.pixmap(16, mode).toImage(), true);
        }
        told->push_back(indent + text);
    }
}

// A chooser: its inside is Qt's.
static void TellChooser(Lines *told, const QFileDialog *chooser)
{
    const QHeaderView *header = chooser->findChild<QTreeView *>("treeView")->header();
    std::string columns;
    for (int i = 0; i < header->count(); ++i)
        columns += " " + std::to_string(header->sectionResizeMode(i));
    const QStringList texts = {chooser->windowTitle(), chooser->nameFilters().join(", "),
                               chooser->selectedNameFilter(),
                               chooser->findChild<QLineEdit *>("fileNameEdit")->text()};
    told->push_back(Numbers(QStringLiteral("  chooser"), chooser->rect()) + " \"" +
                    texts.join("\" \"").toStdString() + "\" columns" + columns + " modal " +
                    std::to_string(chooser->windowModality()) + " mode " +
                    std::to_string(chooser->fileMode()) + std::to_string(chooser->acceptMode()));
}

static void TellWidget(Lines *told, QWidget *widget, const std::string &indent)
{
    const QRect place = widget->isWindow() ? QRect({0, 0}, widget->size()) : widget->geometry();
    const QString text = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    std::string line = Numbers(QLatin1String(widget->metaObject()->className()), place);
    line += " \"" + text.toStdString() + "\"";
    line += std::string(widget->isVisible() ? "" : " hidden") +
            (widget->isEnabled() ? "" : " disabled") + (widget->hasFocus() ? " focus" : "") +
            (ColorsOf(widget->palette()) == ColorsOf(LightPalette()) ? " light" : "") +
            TraitsOf(widget) + DrawingOf(widget, text == QLatin1String("Picture"));
    told->push_back(indent + line);
    const auto *menu = dynamic_cast<QMenu *>(widget);
    for (const QAction *action : widget->actions())
        told->push_back(indent + "  item \"" + action->text().toStdString() + "\"" +
                        (action->isEnabled() ? "" : " gray") +
                        (menu && menu->activeAction() == action ? " active" : ""));
    if (const auto *tree = dynamic_cast<QTreeView *>(widget))
        TellTree(told, tree, indent + "  ");
    else
        for (QObject *child : widget->children())
            if (auto *inner = dynamic_cast<QWidget *>(child))
                TellWidget(told, inner, indent + "  ");
}

static std::string NameOfFocus()
{
    QWidget *focus = QApplication::focusWidget();
    return focus
               ? QAccessible::queryAccessibleInterface(focus)->text(QAccessible::Name).toStdString()
               : "nobody";
}

// Gives the command, tells what it brings to the front, and where keys lead in a dialog; the last
// confirms it.
static void TellWhatComes(Lines *told, const char *heading, const std::function<void()> &command)
{
    QTimer timer;
    std::deque<int> keys;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget *menu = QApplication::activePopupWidget();
        QWidget *front = menu ? menu : QApplication::activeModalWidget();
        if (!front || (!menu && !front->isAncestorOf(QApplication::focusWidget())))
            return;
        auto *chooser = dynamic_cast<QFileDialog *>(front);
        if (keys.empty()) {
            told->push_back(heading);
            if (chooser)
                TellChooser(told, chooser);
            else
                TellWidget(told, front, "  ");
            const Qt::Key confirm =
                front->windowTitle() == "About" ? Qt::Key_Space : Qt::Key_Return;
            keys = {Qt::Key_Tab, Qt::Key_Right, Qt::Key_Down, Qt::Key_Backtab,
                    Qt::Key_Up,  Qt::Key_Left,  Qt::Key_A,    confirm};
        }
        if (menu || chooser) {
            front->close();
        } else {
            told->push_back("  keys to " + NameOfFocus());
            PressKey(QApplication::focusWidget(), keys.front());
            keys.pop_front();
        }
        timer.start();
        if (menu || chooser || keys.empty())
            timer.stop();
    });
    timer.start(20);
    command();
    for (int tries = 0; timer.isActive() && tries < 500; ++tries) {
        QThread::msleep(10);
        RunUntilIdle();
    }
    RunUntilIdle(10);
    told->push_back("  keys to " + NameOfFocus());
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
    for (const int word : {13, 0, 0, 90, 240, 0, 0, 0})
        AddU16(dialog, (unsigned)word);
    for (const Bytes &control :
         {Control(1 | WS_TABSTOP, 36, 0x80, "&Yes"), Control(7, 0, 0x80, "A group"),
          Control(7, 18, 0x80, ""), Control(WS_BORDER, 54, 0x81, ""), Control(0, 72, 0x81, ""),
          Control(1, 90, 0x82, "middle"), Control(2 | WS_BORDER, 108, 0x82, "end"),
          Control(2, 126, 0x85, ""), Control(WS_DISABLED, 144, 0x83, ""),
          Control(WS_TABSTOP, 162, 0x80, "&No"),
          Control(WS_TABSTOP | WS_DISABLED, 180, 0x80, "N&ever"),
          Control(WS_TABSTOP, 198, 0x80, "&Later"), Control(3, 216, 0x82, "#7")}) {
        PadTo(dialog, 4);
        AddBytes(dialog, control);
    }
    const QTemporaryDir folder;
    const std::string path = folder.filePath("somebody.dll").toStdString();
    // Half of it inverts what is below.
    Bytes icon = MakeIconImage(MakePicture(32, 32, 0x00FF0080), 32);
    std::fill(icon.end() - 64, icon.end(), (BYTE)0);
    const Bytes group = MakeIconGroup({{32, 32, 32, icon.size(), 1}});
    const Bytes module =
        BuildPe({.resources = {{5, 1, dialog}, {3, 1, icon}, {14, 7, group}}, .is64 = true}).bytes;
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
    Lines told = {QGuiApplication::applicationName().toStdString(),
                  QGuiApplication::desktopFileName().toStdString(),
                  "Light: " + ColorsOf(LightPalette())};
    const auto tellWindow = [&told](const char *heading) {
        RunUntilIdle();
        told.push_back(heading);
        TellWidget(&told, WidgetOf(globals.mainWindow)->window(), "  ");
    };
    tellWindow("The window:");
    const QTemporaryDir folder;
    std::filesystem::current_path(folder.path().toStdString());
    const Picture red = MakePicture(20, 12, 0xFFFF0000);
    const Bytes file =
        BuildPe({.resources = {{2, 1, MakeDib(red, 4)}, {3, 2, MakePng(red)}}}).bytes;
    std::ofstream("a & b[*].dll", std::ios::binary)
        .write((const char *)file.data(), (long)file.size());
    SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM) "a & b[*].dll");
    WidgetWithId(IDC_TREE)->setFocus();
    for (const int key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Down}) {
        RunUntilIdle();
        PressKey(Tree(), key);
    }
    tellWindow("An item of a file:");
    TellWhatComes(&told, "The pane's menu:", [] {
        PressKey(WidgetWithId(IDC_PANE), Qt::Key_F10, Qt::ShiftModifier);
    });
    TellWhatComes(&told, "The tree's menu:", [] {
        SendMouse(Tree()->viewport(), QEvent::MouseButtonPress, {50, 5}, Qt::RightButton);
    });
    TellWhatComes(&told, "The first menu:", [] { PressKey(Tree(), Qt::Key_F10); });
    WidgetWithId(IDC_PANE)->setFocus();
    SendMouse(WidgetOf(globals.mainWindow), QEvent::MouseButtonPress, {180, 200});
    SendMouse(WidgetOf(globals.mainWindow), QEvent::MouseMove, {230, 200});
    tellWindow("The pane has the keyboard, and the splitter is dragged:");
    SendMouse(WidgetOf(globals.mainWindow), QEvent::MouseMove, {150, 200});
    SendMouse(WidgetOf(globals.mainWindow), QEvent::MouseButtonRelease, {150, 200});
    tellWindow("It is let go:");
    for (const UINT chooser : {IDM_OPEN, IDM_SAVE_AS})
        TellWhatComes(
            &told, "A chooser:", [&] { SendMessageA(globals.mainWindow, WM_COMMAND, chooser, 0); });
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
