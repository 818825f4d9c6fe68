#include "platform/native/qt/display.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QSessionManager>
#include <memory>

#include "platform/native/no_memory.h"
#include "platform/native/qt/accessible.h"
#include "platform/native/qt/end_signals.h"
#include "platform/native/qt/file_choosers.h"
#include "platform/native/qt/frames.h"
#include "platform/native/qt/menu_bars.h"
#include "platform/native/qt/pump.h"
#include "platform/native/qt/registry.h"
#include "platform/native/qt/surfaces.h"
#include "platform/native/qt/text.h"
#include "platform/native/qt/tree_view.h"
#include "platform/native/user/button.h"
#include "platform/native/user/dialogs.h"
#include "platform/native/user/input.h"
#include "platform/native/user/window_table.h"

static std::unique_ptr<QApplication> application;

// --- windows ---

static QWidget *MakeControl(HWND window, const Window *record)
{
    QWidget *parent = WidgetOf(record->parent);
    if (!parent)
        return nullptr;
    if (IsOfClass(record, WC_TREEVIEWA))
        return new TreeWidget(window, parent);
    if (IsPushButton(window))
        return new PushButtonWidget(window, parent);
    auto *control = new SurfaceWidget(window, parent);
    control->setCursor(Qt::ArrowCursor);
    if (IsGroupBox(window))
        control->lower();
    else if (IsOfClass(record, "button"))
        control->setFocusPolicy(Qt::TabFocus);
    return control;
}

static void FollowControl(QWidget *control, const Window *record, WindowChange change)
{
    const RECT &rect = record->rect;
    switch (change) {
    case WindowChange::Rect:
        control->setGeometry(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
        break;
    case WindowChange::Shown: control->setVisible(record->style & WS_VISIBLE); break;
    case WindowChange::Enabled: control->setEnabled(!(record->style & WS_DISABLED)); break;
    case WindowChange::Text:
        if (auto *button = dynamic_cast<PushButtonWidget *>(control))
            button->FollowText();
        else if (auto *tree = dynamic_cast<TreeWidget *>(control))
            tree->FollowFont();
        break;
    default: break;
    }
}

static void MakeWidget(HWND window)
{
    const Window *record = WindowOf(window);
    if (!record->parent) {
        const QWidget *owner = WidgetOf(record->owner);
        auto frame = std::make_unique<FrameWidget>(window, owner ? owner->window() : nullptr);
        EnterWidget(window, frame->Client());
        static_cast<void>(frame.release()); // the table's now
        return;
    }
    std::unique_ptr<QWidget> control(MakeControl(window, record));
    if (control) {
        EnterWidget(window, control.get());
        FollowControl(control.get(), record, WindowChange::Rect);
        control.release()->hide();
    }
}

static void FollowFrame(FrameWidget *frame, WindowChange change)
{
    switch (change) {
    case WindowChange::Rect: frame->FollowRect(); break;
    case WindowChange::Text: frame->FollowText(); break;
    case WindowChange::Shown: frame->FollowShown(); break;
    case WindowChange::Menu: frame->FollowMenuStates(); break;
    case WindowChange::Order: frame->raise(); break;
    default: break; // a dialog's modality keeps its owner from input
    }
}

static void OnWindowChanged(HWND window, WindowChange change)
{
    QWidget *widget = WidgetOf(window);
    if (!widget)
        return;
    if (change == WindowChange::Gone)
        DropWidget(window, FrameShowing(window) ? FrameShowing(window) : widget);
    else if (change == WindowChange::Focus)
        widget->setFocus(Qt::OtherFocusReason);
    else if (FrameWidget *frame = FrameShowing(window))
        FollowFrame(frame, change);
    else
        FollowControl(widget, WindowOf(window), change);
}

// A window that cannot be shown is told by an exception; any other change is followed later, or
// not.
static void OnAnyChange(HWND window, WindowChange change)
{
    if (change == WindowChange::Made)
        MakeWidget(window);
    else
        DoesMemorySuffice([=] { OnWindowChanged(window, change); });
}

static void OnFrameAround(HWND window, RECT *around)
{
    if (const FrameWidget *frame = FrameShowing(window))
        *around = frame->Around();
}

static void OnScreenSize(SIZE *size)
{
    const QSize screen = QGuiApplication::primaryScreen()->size();
    *size = {screen.width(), screen.height()};
}

static void OnCursorChanged(HCURSOR cursor)
{
    const ImagePixels *picture = PictureOf(cursor);
    const bool isWait = picture && MAKEINTRESOURCEA(picture->systemCursor) == IDC_WAIT;
    if (isWait && !QApplication::overrideCursor())
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else if (!isWait && QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
}

// --- pictures ---

static double OnRatio(HWND window)
{
    const QWidget *widget = WidgetOf(window);
    return widget ? widget->devicePixelRatioF() : 1;
}

static void OnPainted(HWND window, const RECT *part)
{
    QWidget *widget = WidgetOf(window);
    if (!widget)
        return;
    if (auto *tree = dynamic_cast<TreeWidget *>(widget))
        tree->viewport()->update();
    else if (auto *surface = dynamic_cast<SurfaceWidget *>(widget))
        surface->NotePainted();
    const QRect painted(part->left, part->top, part->right - part->left, part->bottom - part->top);
    widget->update(painted.translated(ClientCorner(window)));
}

static void OnDrawText(const PixelSurface *surface, const RECT *clip, const Font &font, int x,
                       int y, uint32_t pixel, LPCSTR text, int bytes)
{
    DrawTextLine(surface, clip, font, x, y, pixel, text, bytes);
    ForEachWidget([=](HWND window, QWidget *widget) {
        auto *shown = dynamic_cast<SurfaceWidget *>(widget);
        const Window *record = WindowOf(window);
        if (shown && record && record->pixels.surface.pixels == surface->pixels)
            shown->NoteLine(FromCodePage(text, bytes));
    });
}

static void OnOverlayChanged(HWND window)
{
    if (FrameWidget *frame = FrameShowing(window))
        frame->FollowOverlay();
}

static void TakeInTreeChanges()
{
    ForEachWidget([](HWND, QWidget *widget) {
        if (auto *tree = dynamic_cast<TreeWidget *>(widget))
            tree->TakeInChange();
    });
}

static void OnFlush(HWND window)
{
    const QWidget *widget = WidgetOf(window);
    TakeInTreeChanges();
    if (widget)
        QCoreApplication::sendPostedEvents(widget->window(), QEvent::UpdateRequest);
}

static bool OnCompose(HWND window, const PixelSurface *surface)
{
    QWidget *widget = WidgetOf(window);
    if (!widget)
        return false;
    QImage image = ImageOf(*surface);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return true;
}

static void OnTreeChanged(HWND window)
{
    if (auto *tree = dynamic_cast<TreeWidget *>(WidgetOf(window)))
        tree->NoteChange();
}

// --- what the user does ---

// The window manager may tell a frame's widths at any time.
static void AfterEvents()
{
    TakeInTreeChanges();
    ForEachWidget([](HWND window, QWidget *) {
        if (FrameWidget *frame = FrameShowing(window))
            frame->ReportPlace();
    });
}

// The keys that a dialog treats itself; 0 for others.
static int DialogKey(int key)
{
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return VK_TAB;
    case Qt::Key_Return:
    case Qt::Key_Enter: return VK_RETURN;
    case Qt::Key_Escape: return VK_ESCAPE;
    case Qt::Key_Left: return VK_LEFT;
    case Qt::Key_Right: return VK_RIGHT;
    case Qt::Key_Up: return VK_UP;
    case Qt::Key_Down: return VK_DOWN;
    default: return 0;
    }
}

namespace
{

class DialogKeys : public QObject
{
  public:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress || !object->isWidgetType())
            return false;
        const auto *widget = static_cast<QWidget *>(object);
        const HWND window = WindowShownBy(widget);
        const Window *frame = FrameOf(WindowOf(window));
        if (!frame || !IsOfClass(frame, dialogClass))
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        const int code = DialogKey(key->key());
        if (code == 0)
            return false;
        ReportKey(window, code, key->key() == Qt::Key_Backtab);
        return true;
    }
};

} // namespace

// An entry that does what it can when memory runs out.
template <auto entry, typename... Parameters> static void Quietly(Parameters... parameters)
{
    DoesMemorySuffice([&] { entry(parameters...); });
}

static void FillTable()
{
    visible.runEvents = RunQtEvents;
    visible.wakeUp = WakeQt;
    visible.windowChanged = OnAnyChange;
    visible.mayRefuseSizes = true;
    visible.frameAround = OnFrameAround;
    visible.screenSize = OnScreenSize;
    visible.cursorChanged = Quietly<OnCursorChanged>;
    visible.ratio = OnRatio;
    visible.painted = Quietly<OnPainted>;
    visible.overlayChanged = Quietly<OnOverlayChanged>;
    visible.flush = Quietly<OnFlush>;
    visible.compose = OnCompose;
    visible.measureFont = MeasureFont;
    visible.measureText = MeasureText;
    visible.drawText = OnDrawText;
    visible.treeChanged = Quietly<OnTreeChanged>;
    visible.showMenu = ShowPopupMenu;
    visible.closeMenu = ClosePopupMenu;
    visible.chooseFile = ChooseFile;
}

// Asks the program when the desktop's session is about to end.
static void AskEndOfSession(QSessionManager &session)
{
    std::vector<HWND> windows;
    DoesMemorySuffice([&] { windows = TopLevelWindows(); });
    for (HWND window : windows)
        if (WindowOf(window) && !SendMessageA(window, WM_QUERYENDSESSION, 0, 0))
            session.cancel();
}

void AttachDisplay(int *argc, char **argv)
{
    application = std::make_unique<QApplication>(*argc, argv);
    application->setApplicationName(QStringLiteral("quillmoor"));
    application->setDesktopFileName(QStringLiteral("quillmoor"));
    QApplication::setQuitOnLastWindowClosed(false);
    // Not turned round by a chooser's language.
    QApplication::setLayoutDirection(Qt::LeftToRight);
    auto *keys = new DialogKeys;
    keys->setParent(application.get());
    application->installEventFilter(keys);
    QObject::connect(application.get(), &QApplication::focusChanged, application.get(),
                     [](QWidget *, QWidget *now) { ReportFocus(WindowShownBy(now)); });
    QObject::connect(application.get(), &QGuiApplication::commitDataRequest, application.get(),
                     AskEndOfSession, Qt::DirectConnection);
    afterQtEvents = AfterEvents;
    InstallAccessibles();
    FillTable();
    WatchEndSignals();
}

void DetachDisplay()
{
    UnwatchEndSignals();
    visible = noDisplay;
    afterQtEvents = nullptr;
    DeleteDropped();
    application.reset();
}
