// The real window on the offscreen display, by real mouse and key events.
#include <gtest/gtest.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "platform/native/qt/frames.h"
#include "platform/native/qt/text.h"
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
    QStringList asked;
    Command(IDM_SAVE_AS,
            {confirm, Answer(QMessageBox::No, &asked), confirm, Answer(QMessageBox::Yes, &asked)});
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

TEST_F(QtWindow, AChooserTellsTheFilterThatWasChosen)
{
    char path[MAX_PATH] = "";
    OPENFILENAMEA request = {};
    request.hwndOwner = globals.mainWindow;
    request.lpstrFilter = "One\0*.a\0Two\0*.b;*.*\0";
    request.lpstrFile = path;
    request.nMaxFile = sizeof path;
    const auto choose = [] {
        Shown<QFileDialog>()->selectNameFilter(Shown<QFileDialog>()->nameFilters().last());
    };
    Follow({{Shown<QFileDialog>, choose}, Confirm(QString::fromStdString(commandLine))});
    EXPECT_TRUE(GetOpenFileNameA(&request));
    EXPECT_EQ(request.nFilterIndex, 2u);
    EXPECT_EQ(path, commandLine);
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

TEST_F(QtWindow, ASignalEndsTheProgramAlsoWithAChooserOpen)
{
    Command(IDM_OPEN, {{Shown<QFileDialog>, [] { raise(SIGTERM); }}});
    EXPECT_EQ(Frame(), nullptr);
    EXPECT_TRUE(IsQuitting());
}

TEST(QtProgram, OpensTheFileThatItsArgumentsNameAndEndsBySignal)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath("-style b.dll").toStdString();
    std::ofstream(path) << "no executable";
    const int watch = inotify_init1(IN_CLOEXEC);
    ASSERT_NE(inotify_add_watch(watch, path.c_str(), IN_OPEN), -1);
    QProcess program;
    program.setWorkingDirectory(folder.path());
    program.start(BUILD_FOLDER "/quillmoor", {"-style", "b.dll"});
    pollfd opened = {watch, POLLIN, 0};
    EXPECT_EQ(poll(&opened, 1, 20000), 1);
    EXPECT_FALSE(program.waitForFinished(200));
    program.terminate();
    EXPECT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    close(watch);
}

} // namespace
