#include "platform/native/qt/frames.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QMimeData>
#include <QScreen>
#include <QWindow>

#include "platform/native/no_memory.h"
#include "platform/native/qt/menu_bars.h"
#include "platform/native/qt/registry.h"
#include "platform/native/qt/surfaces.h"
#include "platform/native/qt/text.h"
#include "platform/native/shell32/drops.h"
#include "platform/native/user/geometry.h"
#include "platform/native/user/input.h"
#include "platform/native/user/pictures.h"

// A manager that refuses a size says so sooner.
constexpr int settlingMilliseconds = 300;

static bool IsSizable(const Window *record)
{
    return (record->style & WS_OVERLAPPEDWINDOW) == WS_OVERLAPPEDWINDOW;
}

static Qt::WindowFlags FlagsFor(const Window *record)
{
    if (IsSizable(record))
        return Qt::Window;
    Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (record->style & WS_SYSMENU)
        flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    return flags;
}

FrameWidget::FrameWidget(HWND shown, QWidget *owner)
    : QWidget(owner, FlagsFor(WindowOf(shown))), window(shown), menuBar(nullptr),
      client(new SurfaceWidget(shown, this)), overlay(new OverlayWidget(shown, this))
{
    const Window *record = WindowOf(window);
    setAcceptDrops(true);
    if (GetMenu(window))
        menuBar = MakeMenuBar(window, this);
    if (owner)
        setWindowModality(Qt::ApplicationModal);
    if (const ImagePixels *icon = PictureOf(record->windowClass->icon))
        setWindowIcon(QIcon(PixmapOf(*icon)));
    const ImagePixels *cursor = PictureOf(record->windowClass->cursor);
    if (cursor && !cursor->pixels.empty())
        client->setCursor(QCursor(PixmapOf(*cursor), cursor->hotX, cursor->hotY));
    client->setFocusPolicy(Qt::TabFocus);
    settling.setSingleShot(true);
    settling.setInterval(settlingMilliseconds);
    connect(&settling, &QTimer::timeout, this, [this] { ReportSettled(window); });
    FollowText();
    FollowRect();
}

int FrameWidget::MenuHeight() const
{
    return menuBar ? menuBar->sizeHint().height() : 0;
}

QMargins FrameWidget::Margins() const
{
    return isVisible() && windowHandle() ? windowHandle()->frameMargins() : QMargins();
}

RECT FrameWidget::Around() const
{
    const QMargins margins = Margins();
    return {margins.left(), margins.top() + MenuHeight(), margins.right(), margins.bottom()};
}

void FrameWidget::LayOut()
{
    const int top = MenuHeight();
    if (menuBar)
        menuBar->setGeometry(0, 0, width(), top);
    const QRect area(0, top, width(), std::max(0, height() - top));
    client->setGeometry(area);
    overlay->setGeometry(area);
}

// Places on the screen count from the primary screen's corner, Qt's from the desktop's.
static QPoint ScreenCorner()
{
    return QGuiApplication::primaryScreen()->geometry().topLeft();
}

// A window that fills the screen has the size that its manager gives: on Wayland one that takes a
// larger one is ended.
static bool FillsScreen(const QWidget *frame)
{
    const QWindow *shown = frame->windowHandle();
    return shown && shown->windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen);
}

void FrameWidget::FollowRect()
{
    const Window *record = WindowOf(window);
    if (!record)
        return;
    if (FillsScreen(this)) {
        LayOut();
        return;
    }
    const SIZE wanted = ClientSizeOf(record);
    const QSize inside(static_cast<int>(wanted.cx), static_cast<int>(wanted.cy) + MenuHeight());
    if (!IsSizable(record))
        setFixedSize(inside.expandedTo({1, 1}));
    // Always by the inside's corner, never by the frame's: Qt would change from the one to the
    // other at the first resize, and a manager that is just dragging the frame then puts it
    // elsewhere.
    const QMargins margins = Margins();
    const QPoint corner(record->rect.left + margins.left(), record->rect.top + margins.top());
    setGeometry(QRect(ScreenCorner() + corner, IsSizable(record) ? inside : size()));
    if (!isFrameKnown) {
        firstInside = geometry();
        firstOuter = {static_cast<int>(record->rect.right - record->rect.left),
                      static_cast<int>(record->rect.bottom - record->rect.top)};
    }
    LayOut();
}

// The program wanted its size with the frame, which the manager tells only when the window shows:
// the window is made as much smaller, and its frame put where the program wanted it. Before the
// window is exposed the manager may not have it yet, and a changed place would be lost.
void FrameWidget::FitFirstFrame()
{
    if (isFrameKnown || Margins().isNull() || !windowHandle()->isExposed())
        return;
    isFrameKnown = true;
    if (!IsSizable(WindowOf(window)) || FillsScreen(this) || size() != firstInside.size())
        return; // the manager gave a size of its own
    const bool isPlaceKept = geometry().topLeft() == firstInside.topLeft();
    const QPoint corner = (isPlaceKept ? firstInside.topLeft() : pos()) - ScreenCorner();
    ReportRect(
        window,
        {corner.x(), corner.y(), corner.x() + firstOuter.width(), corner.y() + firstOuter.height()},
        Around());
    FollowRect();
}

void FrameWidget::ReportPlace()
{
    if (!WindowOf(window) || !isVisible() || isMinimized())
        return;
    FitFirstFrame();
    const Window *record = WindowOf(window);
    if (!record)
        return;
    const RECT around = Around();
    const QPoint corner = pos() - ScreenCorner();
    const RECT outer = {corner.x(), corner.y(), corner.x() + around.left + width() + around.right,
                        corner.y() + around.top + height() - MenuHeight() + around.bottom};
    const auto isSame = [](const RECT &a, const RECT &b) {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    };
    if (isSame(outer, record->rect) && isSame(around, record->around))
        return;
    settling.start();
    ReportRect(window, outer, around);
}

void FrameWidget::resizeEvent(QResizeEvent *)
{
    LayOut();
    ReportPlace();
}

void FrameWidget::moveEvent(QMoveEvent *)
{
    ReportPlace();
}

void FrameWidget::closeEvent(QCloseEvent *event)
{
    event->ignore();
    ReportClose(window);
}

void FrameWidget::keyPressEvent(QKeyEvent *event)
{
    QWidget *inner = focusWidget();
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::NoModifier && menuBar) {
        OpenFirstMenu(menuBar);
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier && inner) {
        // Desktops know it as another context menu key, Qt does not.
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, inner->mapToGlobal(QPoint()));
        QApplication::sendEvent(inner, &asked);
    } else {
        QWidget::keyPressEvent(event);
    }
}

// The paths of the local files, as the system's own bytes: a name that is no UTF-8 comes as %XX.
static std::vector<std::string> ListPaths(const QMimeData *data)
{
    std::vector<std::string> paths;
    for (const QUrl &address : data->urls())
        if (address.isLocalFile() && address.host().isEmpty())
            paths.push_back(
                QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toLatin1())
                    .toStdString());
    return paths;
}

// None when memory runs out.
static std::vector<std::string> PathsOf(const QMimeData *data)
{
    return UnlessMemoryRunsOut(std::vector<std::string>(), [=] { return ListPaths(data); });
}

void FrameWidget::dragEnterEvent(QDragEnterEvent *event)
{
    if (TakesDrops(window) && !PathsOf(event->mimeData()).empty())
        event->acceptProposedAction();
}

void FrameWidget::dropEvent(QDropEvent *event)
{
    const QPoint place = event->position().toPoint() - client->pos();
    ReportDrop(window, {place.x(), place.y()}, PathsOf(event->mimeData()));
    event->acceptProposedAction();
}

void FrameWidget::FollowText()
{
    if (const Window *record = WindowOf(window))
        setWindowTitle(TitleFrom(record->text));
}

void FrameWidget::FollowShown()
{
    const Window *record = WindowOf(window);
    if (!record)
        return;
    if (!(record->style & WS_VISIBLE)) {
        hide();
        ActivateFrame(record->owner);
        return;
    }
    if (record->isMaximized)
        showMaximized();
    else
        show();
    if (record->owner)
        activateWindow();
}

void FrameWidget::FollowMenuStates()
{
    if (menuBar)
        FollowMenu(window, menuBar);
}

void FrameWidget::FollowOverlay()
{
    overlay->Follow();
}

FrameWidget *FrameShowing(HWND window)
{
    QWidget *widget = WidgetOf(window);
    return widget ? dynamic_cast<FrameWidget *>(widget->parentWidget()) : nullptr;
}

void ActivateFrame(HWND window)
{
    FrameWidget *frame = FrameShowing(window);
    if (frame && frame->isVisible())
        frame->activateWindow();
}
