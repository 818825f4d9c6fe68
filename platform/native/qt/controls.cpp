#include "platform/native/qt/controls.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "platform/native/qt/registry.h"
#include "platform/native/qt/surfaces.h"
#include "platform/native/qt/text.h"
#include "platform/native/user/button.h"
#include "platform/native/user/control_font.h"
#include "platform/native/user/input.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/text_lines.h"
#include "platform/win32/gdi.h"

SurfaceWidget::SurfaceWidget(HWND shown, QWidget *parent) : QWidget(parent), window(shown)
{
    setPalette(LightPalette());
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoMousePropagation);
}

void SurfaceWidget::NoteLine(const QString &line)
{
    drawnLines.append(line);
}

void SurfaceWidget::NotePainted()
{
    QString text = drawnLines.join(QLatin1Char('\n'));
    drawnLines.clear();
    if (text == shownText)
        return;
    text.swap(shownText);
    if (!QAccessible::isActive() || !IsOwnerDrawn(window))
        return;
    QAccessibleTextUpdateEvent event(this, 0, text, shownText);
    QAccessible::updateAccessibility(&event);
}

// By filling: where the screen has one and a half pixels for one, a pen's line may fall outside.
static void DrawFrame(QPainter *painter, const QRect &around, int width, const QColor &color)
{
    const QRegion inside(around.adjusted(width, width, -width, -width));
    for (const QRect &side : QRegion(around) - inside)
        painter->fillRect(side, color);
}

void SurfaceWidget::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const Window *record = WindowOf(window);
    if (!record || !record->pixels.surface.pixels) {
        painter.fillRect(event->rect(), SystemColor(COLOR_BTNFACE));
        return;
    }
    const PixelSurface &surface = record->pixels.surface;
    if (surface.ratio != devicePixelRatioF())
        InvalidateAll(window);
    const QPoint origin = ClientCorner(window);
    const QRect pixels(origin, QSize(surface.width, surface.height));
    if (!pixels.contains(event->rect()))
        painter.fillRect(event->rect(), SystemColor(COLOR_BTNFACE));
    painter.drawImage(origin, ImageOf(surface));
    if (!origin.isNull())
        DrawFrame(&painter, rect(), 1, SystemColor(COLOR_WINDOWTEXT));
    if (!hasFocus() || !IsOwnerDrawn(window))
        return;
    // A control may reach over its parent's edges.
    const QRect seen = rect() & parentWidget()->rect().translated(-pos());
    DrawFrame(&painter, seen, 2, SystemColor(COLOR_HIGHLIGHT));
}

void SurfaceWidget::Report(UINT message, const QMouseEvent *event)
{
    const QPoint place = event->position().toPoint() - ClientCorner(window);
    ReportMouse(window, message, place.x(), place.y());
}

void SurfaceWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        Report(WM_LBUTTONDOWN, event);
    else if (event->button() == Qt::RightButton)
        Report(WM_RBUTTONDOWN, event);
}

void SurfaceWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        Report(WM_LBUTTONUP, event);
}

void SurfaceWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        Report(WM_LBUTTONDBLCLK, event);
    else
        mousePressEvent(event);
}

void SurfaceWidget::mouseMoveEvent(QMouseEvent *event)
{
    Report(WM_MOUSEMOVE, event);
}

void SurfaceWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space)
        ReportKey(window, VK_SPACE, false);
    else
        QWidget::keyPressEvent(event);
}

void SurfaceWidget::contextMenuEvent(QContextMenuEvent *event)
{
    // A press of the mouse has been reported already.
    if (event->reason() == QContextMenuEvent::Keyboard)
        ReportMouse(window, WM_RBUTTONDOWN, width() / 2, height() / 2);
}

OverlayWidget::OverlayWidget(HWND shown, QWidget *parent) : QWidget(parent), window(shown)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    hide();
}

void OverlayWidget::Follow()
{
    const Window *record = WindowOf(window);
    const bool covers = record && !record->overlay.covered.empty();
    setVisible(covers);
    if (covers) {
        raise();
        update();
    }
}

void OverlayWidget::paintEvent(QPaintEvent *)
{
    const Window *record = WindowOf(window);
    if (!record || record->overlay.covered.empty())
        return;
    QRegion covered;
    for (const RECT &part : record->overlay.covered)
        covered += QRect(part.left, part.top, part.right - part.left, part.bottom - part.top);
    QPainter painter(this);
    painter.setClipRegion(covered);
    painter.drawImage(QPoint(0, 0), ImageOf(record->overlay.pixels.surface));
}

PushButtonWidget::PushButtonWidget(HWND shown, QWidget *parent) : QPushButton(parent), window(shown)
{
    setPalette(LightPalette());
    setCursor(Qt::ArrowCursor);
    setAutoDefault(true);
    FollowText();
    connect(this, &QPushButton::clicked, this, [this] { ReportClick(window); });
}

void PushButtonWidget::FollowText()
{
    const Window *record = WindowOf(window);
    if (!record)
        return;
    setText(FromCodePage(record->text));
    setAccessibleName(FromCodePage(WithoutMnemonic(record->text)));
    setFont(QtFont(FontOf(window)));
}
