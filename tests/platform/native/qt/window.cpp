// The real window on the offscreen display, by real mouse and key events.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>

#include "platform/native/qt/frames.h"
#include "platform/native/qt/text.h"
#include "platform/native/user/input.h"
#include "platform/native/user/window_table.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "shell/start.h"
#include "tests/support/real_window.h"

namespace
{

// What a test does while nested loops run, once what it acts on shows.
struct Step {
    std::function<bool()> isThere;
    std::function<void()> act;
};

// Takes the steps in turn; each may run a loop of its own, in which the next is taken.
void Follow(const std::vector<Step> &steps)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        if (!steps.front().isThere())
            return;
        timer->stop();
        timer->deleteLater();
        if (steps.size() > 1)
            Follow({steps.begin() + 1, steps.end()});
        steps.front().act();
    });
    timer->start(10);
}

// Whether it comes true within seconds.
bool WaitFor(const std::function<bool()> &isTrue)
{
    for (int tries = 0; tries < 500 && !isTrue(); ++tries) {
        QThread::msleep(10);
        RunUntilIdle();
    }
    return isTrue();
}

// The dialog that shows, of one kind; NULL for none.
template <typename Dialog> Dialog *Shown()
{
    return dynamic_cast<Dialog *>(QApplication::activeModalWidget());
}

QMenu *ShownMenu()
{
    return dynamic_cast<QMenu *>(QApplication::activePopupWidget());
}

void SendMouse(QWidget *widget, QEvent::Type type, QPoint place,
               Qt::MouseButton button = Qt::LeftButton)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, place, widget->mapToGlobal(place), isMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
    RunUntilIdle();
}

struct QtWindow : testing::Test {
    QTemporaryDir folder;
    std::string commandLine;

    QtWindow()
    {
        splitPosition = 180;
        const Picture red = MakePicture(32, 16, 0xFFFF0000);
        const ExecutableDescription description = {{{2, 101, MakeDib(red, 1)},
                                                    {3, 1, MakeIconImage(red, 4)},
                                                    {3, 2, MakePng(red)},
                                                    {6, 7, MakeStringBlock({u"One", u"Two"})},
                                                    {10, "TEXT", {'A', '1', ' ', 'z'}},
                                                    {10, "A/B", {1, 2}},
                                                    {10, u"X \"\u00C3\u00A9\" Y", {3}}}};
        commandLine = File("many & more[*].dll");
        EXPECT_TRUE(WriteBytes(commandLine.c_str(), BuildPe(description).bytes));
        std::filesystem::current_path(
            std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path());
        EXPECT_TRUE(StartUp(GetModuleHandleA(nullptr), commandLine.data(), SW_SHOWNORMAL));
        RunUntilIdle();
    }

    ~QtWindow() override
    {
        DestroyWindow(globals.mainWindow);
        MSG message;
        while (GetMessageA(&message, nullptr, 0, 0))
            DispatchMessageA(&message);
        ShutDown();
    }

    std::string File(const char *name)
    {
        return folder.filePath(QString::fromUtf8(name)).toStdString();
    }

    static FrameWidget *Frame()
    {
        return FrameShowing(globals.mainWindow);
    }

    static QWidget *Client()
    {
        return WidgetOf(globals.mainWindow);
    }

    static QWidget *Pane()
    {
        return WidgetWithId(IDC_PANE);
    }

    static QAction *Action(UINT id)
    {
        for (QAction *menu : Frame()->findChild<QMenuBar *>()->actions())
            for (QAction *action : menu->menu()->actions())
                if (action->data().toUInt() == id)
                    return action;
        return nullptr;
    }

    // Gives a command that runs a loop, and takes the steps in it.
    static void Command(UINT id, const std::vector<Step> &steps)
    {
        Follow(steps);
        Action(id)->trigger();
        RunUntilIdle();
    }

    static QSize OuterSize()
    {
        RECT outer;
        GetWindowRect(globals.mainWindow, &outer);
        return {outer.right - outer.left, outer.bottom - outer.top};
    }

    // Opens a category and goes to its item by keys, from the top.
    void SelectByKeys(int category, int item)
    {
        PressKey(Tree(), Qt::Key_Home);
        for (int i = 0; i < category; ++i)
            PressKey(Tree(), Qt::Key_Down);
        PressKey(Tree(), Qt::Key_Right);
        for (int i = 0; i <= item; ++i)
            PressKey(Tree(), Qt::Key_Down);
        RunUntilIdle();
    }
};

TEST_F(QtWindow, ShowsItsTitleAndMenuInTheScreensMiddle)
{
    EXPECT_TRUE(Frame()->isVisible());
    EXPECT_TRUE(WaitFor([] { return OuterSize() == QSize(620, 440); }));
    EXPECT_EQ(Frame()->frameGeometry().center(), QPoint(300 + 499, 100 + 399));
    EXPECT_EQ(Frame()->windowHandle()->title().toStdString(), "Quillmoor [ " + commandLine + " ] ");
    EXPECT_FALSE(Frame()->windowIcon().isNull());
    EXPECT_TRUE(Action(IDM_CLOSE)->isEnabled());
    EXPECT_FALSE(Action(IDM_SAVE_AS)->isEnabled());
    EXPECT_EQ(Action(IDM_SAVE_AS)->text(), "Save &as...");
}

TEST_F(QtWindow, KeysSelectAnItemWhoseLabelIsHighlightedAndThePaneDraws)
{
    SelectByKeys(1, 0);
    EXPECT_TRUE(Action(IDM_SAVE_AS)->isEnabled());
    const QImage pane = Pane()->grab().toImage(), tree = Tree()->viewport()->grab().toImage();
    const QPoint middle = Pane()->rect().center();
    EXPECT_EQ(pane.pixelColor(middle), QColor(255, 0, 0));
    EXPECT_EQ(pane.pixelColor(middle - QPoint(0, 20)), QColor(255, 255, 255));
    const QRect item = Tree()->visualRect(Tree()->currentIndex());
    const QColor highlight = Tree()->palette().color(QPalette::Highlight);
    int first = 0;
    while (first < tree.width() && tree.pixelColor(first, item.bottom() - 1) != highlight)
        ++first;
    EXPECT_GE(first, item.left() + 16); // the picture is 16 wide and has a ground of its own
    EXPECT_LT(first, item.left() + 32);
    // Back on the category nothing is drawn.
    PressKey(Tree(), Qt::Key_Up);
    RunUntilIdle();
    EXPECT_EQ(Pane()->grab().toImage().pixelColor(middle), QColor(255, 255, 255));
    EXPECT_FALSE(Action(IDM_SAVE_AS)->isEnabled());
}

TEST_F(QtWindow, TheSplitterIsDraggedAndTheBarLiesAboveBothChildren)
{
    const auto greys = [](int x) {
        const QImage image = Frame()->grab().toImage();
        int count = 0;
        for (int y = Frame()->height() - 60; y < Frame()->height() - 20; ++y)
            count += image.pixelColor(x, y) != QColor(255, 255, 255);
        return count;
    };
    SendMouse(Client(), QEvent::MouseButtonPress, {180, 200});
    for (int x : {230, 150}) {
        SendMouse(Client(), QEvent::MouseMove, {x, 200});
        EXPECT_EQ(greys(x), 20);
    }
    EXPECT_EQ(greys(230), 0);
    SendMouse(Client(), QEvent::MouseButtonRelease, {150, 200});
    EXPECT_EQ(Tree()->width(), 148);
    EXPECT_EQ(Pane()->x(), 152);
    EXPECT_EQ(greys(140), 0);
    EXPECT_TRUE(WindowOf(globals.mainWindow)->overlay.covered.empty());
}

TEST_F(QtWindow, TooSmallASizeIsPutBackAndALargerOneLaidOut)
{
    Frame()->resize(Frame()->width() + 80, Frame()->height() + 60);
    RunUntilIdle();
    EXPECT_EQ(Tree()->height(), Client()->height());
    EXPECT_EQ(Pane()->width(), Client()->width() - 182);
    const auto isLarge = [] { return OuterSize() == QSize(620, 440); };
    // Once, and however fast the sizes follow each other.
    for (int times : {1, 20}) {
        for (int i = 0; i < times; ++i) {
            Frame()->resize(500, 300 + i % 2);
            RunUntilIdle();
        }
        EXPECT_TRUE(times == 1 ? isLarge() : WaitFor(isLarge));
        EXPECT_EQ(Pane()->width(), Client()->width() - 182);
    }
}

TEST_F(QtWindow, AWindowThatFillsTheScreenKeepsItsManagersSize)
{
    Frame()->showFullScreen();
    RunUntilIdle();
    const QSize filled = Frame()->size();
    ASSERT_NE(filled.width(), 700);
    MoveWindow(globals.mainWindow, 10, 10, 700, 500, TRUE);
    EXPECT_EQ(Frame()->size(), filled);
    RunUntilIdle();
    EXPECT_EQ(Pane()->width(), filled.width() - 182);
    EXPECT_EQ(OuterSize().width(), filled.width());
}

TEST_F(QtWindow, NoBorderIsLostWhereAPixelIsAPixelAndAPart)
{
    for (double ratio : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        QImage image((QSizeF(Client()->size()) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        Client()->render(&image);
        const int y = image.height() / 2, left = static_cast<int>(180 * ratio);
        int black = 0;
        for (int x = left; x < left + 8; ++x)
            black += image.pixelColor(x, y) == QColor(0, 0, 0);
        EXPECT_GE(black, 1) << ratio;
    }
}

TEST_F(QtWindow, ARightPressAndKeysOfferTheContextMenu)
{
    SelectByKeys(0, 1);
    const std::function<void(QWidget *)> ways[] = {
        [](QWidget *widget) {
            QWidget *pressed = widget == Tree() ? Tree()->viewport() : widget;
            SendMouse(pressed, QEvent::MouseButtonPress, {50, 5}, Qt::RightButton);
        },
        [](QWidget *widget) {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
            QApplication::sendEvent(widget, &event);
        },
        [](QWidget *widget) {
            widget->setFocus();
            PressKey(widget, Qt::Key_F10, Qt::ShiftModifier);
        },
    };
    const QStringList both = {"Save &as...", "&Play (gray)"};
    for (const auto &ask : ways)
        for (QWidget *where : {Pane(), static_cast<QWidget *>(Tree())}) {
            QStringList texts;
            Follow({{ShownMenu, [&] {
                         for (const QAction *action : ShownMenu()->actions())
                             texts.append(action->text() + (action->isEnabled() ? "" : " (gray)"));
                         PressKey(ShownMenu(), Qt::Key_Escape);
                     }}});
            ask(where);
            RunUntilIdle();
            EXPECT_EQ(texts, where == Pane() ? both : both.mid(0, 1));
            // The press selected nothing.
            EXPECT_EQ(Tree()->currentIndex().data().toString(), "TEXT (4 bytes)");
        }
}

TEST_F(QtWindow, F10OpensTheFirstMenu)
{
    for (QWidget *widget : {Client(), static_cast<QWidget *>(Tree()), Pane()}) {
        PressKey(widget, Qt::Key_F10);
        ASSERT_NE(ShownMenu(), nullptr);
        EXPECT_EQ(ShownMenu()->activeAction(), Action(IDM_OPEN));
        PressKey(ShownMenu(), Qt::Key_Escape);
        EXPECT_EQ(ShownMenu(), nullptr);
    }
}

TEST_F(QtWindow, ScreenReadersAreToldWhatIsShown)
{
    const auto of = [](QObject *object) { return QAccessible::queryAccessibleInterface(object); };
    EXPECT_EQ(of(Frame())->role(), QAccessible::Window);
    EXPECT_EQ(of(Frame())->text(QAccessible::Name).toStdString(),
              "Quillmoor [ " + commandLine + " ] ");
    EXPECT_EQ(of(Tree())->text(QAccessible::Name), "Resources");
    QAccessibleInterface *pane = of(Pane());
    QAccessibleTextInterface *text = pane->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(pane->text(QAccessible::Name), "View");
    EXPECT_TRUE(pane->state().readOnly);
    const auto shown = [text] { return text->text(0, text->characterCount()); };
    EXPECT_EQ(shown(), "");
    SelectByKeys(1, 0);
    EXPECT_EQ(shown(), "32 X 16, 1 bits");
    const QModelIndex item = Tree()->currentIndex();
    EXPECT_EQ(item.data(Qt::AccessibleDescriptionRole), "level 2, 1 of 1");
    EXPECT_EQ(item.parent().data(Qt::AccessibleDescriptionRole), "level 1, 2 of 4");
    SelectByKeys(0, 1);
    EXPECT_EQ(shown(), "41 31 20 7A " + QString(37, ' ') + "A..z");
    PressKey(Tree(), Qt::Key_Home);
    RunUntilIdle();
    EXPECT_EQ(shown(), "");
}

TEST_F(QtWindow, TheAboutBoxIsDrivenByKeys)
{
    QWidget *box = nullptr;
    bool stayedOpen = false;
    QStringList names;
    const auto isShown = [] {
        return Shown<QWidget>() && Shown<QWidget>()->windowTitle() == "About";
    };
    const auto lookAndEscape = [&] {
        box = Shown<QWidget>();
        EXPECT_EQ(QAccessible::queryAccessibleInterface(box)->role(), QAccessible::Dialog);
        for (QWidget *inner : box->findChildren<QWidget *>())
            names += QAccessible::queryAccessibleInterface(inner)->text(QAccessible::Name);
        PressKey(box->focusWidget() ? box->focusWidget() : box, Qt::Key_Escape);
    };
    const auto confirm = [&] {
        stayedOpen = Shown<QWidget>() == box;
        PressKey(box->findChild<QPushButton *>(), Qt::Key_Return);
    };
    SetFocus(GetDlgItem(globals.mainWindow, IDC_TREE));
    Command(IDM_ABOUT, {{isShown, lookAndEscape}, {[] { return true; }, confirm}});
    EXPECT_TRUE(stayedOpen);
    EXPECT_EQ(FocusWindow(), GetDlgItem(globals.mainWindow, IDC_TREE));
    EXPECT_EQ(names.filter("Quillmoor version 3.0a").size(), 1);
    EXPECT_TRUE(names.contains("Picture") && names.contains("OK"));
    EXPECT_FALSE(isShown());
}

// --- the file choosers ---

QLineEdit *NameField()
{
    return Shown<QFileDialog>()->findChild<QLineEdit *>("fileNameEdit");
}

// Confirms a name, or the one that is offered.
Step Confirm(const QString &name = {})
{
    return {Shown<QFileDialog>, [=] {
                if (!name.isNull())
                    NameField()->setText(name);
                QMetaObject::invokeMethod(Shown<QFileDialog>(), "accept");
            }};
}

// Closes the chooser's own warning, which runs a loop of Qt's, and adds its text.
Step Answer(QMessageBox::StandardButton button, QStringList *texts)
{
    return {Shown<QMessageBox>, [=] {
                texts->append(Shown<QMessageBox>()->text());
                Shown<QMessageBox>()->button(button)->click();
            }};
}

const Step cancel = {Shown<QFileDialog>, [] { Shown<QFileDialog>()->reject(); }};

TEST_F(QtWindow, TheSaveChooserKeepsTheNameAndAsksBeforeItReplaces)
{
    SelectByKeys(0, 1);
    const std::string path = File("no extension");
    std::ofstream(path) << "old";
    const Step confirm = Confirm(QString::fromStdString(path));
    QString offered, filter;
    QStringList asked;
    const auto look = [&] {
        offered = NameField()->text();
        filter = Shown<QFileDialog>()->nameFilters().join('|');
    };
    Command(IDM_SAVE_AS, {{Shown<QFileDialog>, look},
                          confirm,
                          Answer(QMessageBox::No, &asked),
                          confirm,
                          Answer(QMessageBox::Yes, &asked)});
    EXPECT_EQ(offered, "TEXT.BIN");
    EXPECT_EQ(filter, "Binary files (*.BIN)|All files (*)");
    EXPECT_EQ(asked.filter("no extension").size(), 2);
    EXPECT_EQ(std::filesystem::file_size(path), 4u);

    // Quotes belong to the name, which is in the code page although it could be UTF-8.
    PressKey(Tree(), Qt::Key_Down);
    const auto enter = [&] { Shown<QFileDialog>()->setDirectory(folder.path()); };
    Command(IDM_SAVE_AS, {{Shown<QFileDialog>, enter}, Confirm()});
    Command(IDM_SAVE_AS, {Confirm(), Answer(QMessageBox::No, &asked), cancel});
    EXPECT_TRUE(std::filesystem::exists(File("X \"\u00C3\u00A9\" Y.BIN")));
    EXPECT_EQ(asked.filter("X \"").size(), 1);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(QtWindow, AChooserSpeaksTheUsersLanguageAndNothingElseDoes)
{
    QLocale::setDefault(QLocale(QLocale::Arabic));
    QString cancels;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    const auto look = [&] {
        const auto *buttons = Shown<QFileDialog>()->findChild<QDialogButtonBox *>();
        cancels = buttons->button(QDialogButtonBox::Cancel)->text();
        direction = buttons->layoutDirection();
    };
    Command(IDM_OPEN, {{Shown<QFileDialog>, look}, cancel});
    QLocale::setDefault(QLocale::system());
    EXPECT_EQ(cancels.toStdString(), "\u0623\u0644\u063A\u0650");
    EXPECT_EQ(direction, Qt::RightToLeft);
    EXPECT_EQ(Client()->layoutDirection(), Qt::LeftToRight);
    EXPECT_EQ(QFileDialog::tr("Files"), "Files");
}

TEST_F(QtWindow, TheSaveChooserRefusesWhatCannotBeAFile)
{
    SelectByKeys(0, 0);
    QStringList said;
    const QString tooLong = QString::fromStdString(File("")) + QString(259, 'x');
    Command(IDM_SAVE_AS, {Confirm(), Answer(QMessageBox::Ok, &said), Confirm(tooLong),
                          Answer(QMessageBox::Ok, &said), cancel});
    ASSERT_EQ(said.size(), 2);
    EXPECT_TRUE(said[0].contains('/')) << said[0].toStdString();
    EXPECT_TRUE(said[1].contains("259")) << said[1].toStdString();
}

TEST_F(QtWindow, MessagesAreDispatchedWhileALoopOfQtsOwnRuns)
{
    SelectByKeys(0, 1);
    std::ofstream(File("x")) << "old";
    QStringList asked;
    const auto hasClosed = [] { return Frame()->windowTitle() == "Quillmoor [ NO FILE ] "; };
    // While the chooser asks, the program is told to close its file.
    const auto close = [] { PostMessageA(globals.mainWindow, WM_COMMAND, IDM_CLOSE, 0); };
    Command(IDM_SAVE_AS, {Confirm(QString::fromStdString(File("x"))),
                          {Shown<QMessageBox>, close},
                          {hasClosed, [] {}},
                          Answer(QMessageBox::No, &asked),
                          cancel});
    EXPECT_EQ(asked.size(), 1);
    EXPECT_TRUE(hasClosed());
    EXPECT_TRUE(WaitFor([] { return Tree()->model()->rowCount() == 0; })); // it follows later
}

// Opens a chooser, and in it does what ends the program.
void EndWithAChooserOpen(const std::function<void()> &end)
{
    QtWindow::Command(IDM_OPEN, {{Shown<QFileDialog>, end}});
    EXPECT_EQ(QtWindow::Frame(), nullptr);
    EXPECT_TRUE(IsQuitting());
}

TEST_F(QtWindow, TheExitCommandEndsTheProgramAlsoWithAChooserOpen)
{
    EndWithAChooserOpen([] { PostMessageA(globals.mainWindow, WM_COMMAND, IDM_EXIT, 0); });
}

TEST_F(QtWindow, ASignalEndsTheProgramAlsoWithAChooserOpen)
{
    EndWithAChooserOpen([] { raise(SIGTERM); });
}

// In pages; 0 under the address sanitizer, which keeps freed memory and tells of leaks itself.
long ResidentPages()
{
#ifdef __SANITIZE_ADDRESS__
    return 0;
#endif
    long whole = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> whole >> resident;
    return resident;
}

TEST_F(QtWindow, CyclesOfOpenLookAndCloseLeaveNoMemoryBehind)
{
    long after100 = 0;
    for (int cycle = 1; cycle <= 1000; ++cycle) {
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0,
                     reinterpret_cast<LPARAM>(commandLine.c_str()));
        RunUntilIdle();
        for (auto [category, item] : {std::pair(3, 0), {2, 1}, {1, 0}, {0, 1}})
            SelectByKeys(category, item);
        ASSERT_TRUE(Action(IDM_SAVE_AS)->isEnabled());
        Action(IDM_CLOSE)->trigger();
        RunUntilIdle();
        ASSERT_EQ(Tree()->model()->rowCount(), 0);
        if (cycle == 100)
            after100 = ResidentPages();
    }
    // The heap and the system's bookkeeping move by a few pages either way.
    EXPECT_LE(ResidentPages(), after100 + 64);
}

TEST(QtProgram, RunsUntilItsExit)
{
    Follow({{[] { return globals.mainWindow != nullptr; },
             [] { SendMessageA(globals.mainWindow, WM_COMMAND, IDM_EXIT, 0); }}});
    char commandLine[] = "none.dll";
    EXPECT_EQ(WinMain(GetModuleHandleA(nullptr), nullptr, commandLine, SW_SHOWNORMAL), 0);
    EXPECT_EQ(globals.mainWindow, nullptr);
}

TEST_F(QtWindow, TheFirstFileDroppedIsOpened)
{
    // A name that is no UTF-8 keeps its bytes.
    const std::string path = File("") + "/caf\xE9 %41.dll";
    EXPECT_TRUE(WriteBytes(path.c_str(), BuildPe({{{10, 1, {1}}}}).bytes));
    const struct {
        QByteArrayList addresses;
        int isTaken;
    } cases[] = {
        {{"https://example.org/a.dll", "file://elsewhere/a.dll"}, 0},
        {{"file://" + QByteArray::fromStdString(path).toPercentEncoding("/"), "file:///b"}, 1},
    };
    for (const auto &c : cases) {
        QMimeData data;
        QList<QUrl> addresses;
        for (const QByteArray &address : c.addresses)
            addresses.append(QUrl(QString::fromLatin1(address)));
        data.setUrls(addresses);
        QDragEnterEvent enter({200, 200}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(Frame(), &enter);
        EXPECT_EQ(enter.isAccepted(), c.isTaken);
        QDropEvent drop({200, 200}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Frame(), &drop);
        RunUntilIdle();
        EXPECT_EQ(WindowOf(globals.mainWindow)->text.find(path) != std::string::npos, c.isTaken);
    }
    std::filesystem::remove(path); // Qt does not find it when it empties the folder
}

} // namespace
