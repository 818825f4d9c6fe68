#include "platform/native/qt/registry.h"

#include <QHash>
#include <QPointer>
#include <vector>

#include "platform/native/qt/surfaces.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"

static QHash<HWND, QWidget *> widgets;
static std::vector<QPointer<QWidget>> dropped;

QWidget *WidgetOf(HWND window)
{
    return widgets.value(window, nullptr);
}

void EnterWidget(HWND window, QWidget *widget)
{
    // All that show may go at once, a chooser too, when there may be no memory.
    dropped.reserve(dropped.size() + static_cast<size_t>(widgets.size()) + 2);
    widgets.insert(window, widget);
}

void DropWidget(HWND window, QWidget *outermost)
{
    widgets.remove(window);
    DropLater(outermost);
}

void DropLater(QWidget *widget)
{
    widget->hide();
    dropped.emplace_back(widget);
}

void DeleteDropped()
{
    while (!dropped.empty()) {
        const QPointer<QWidget> widget = dropped.back();
        dropped.pop_back();
        delete widget.data();
    }
}

QPoint ClientCorner(HWND window)
{
    const Window *record = WindowOf(window);
    return record && record->parent ? QPoint(record->around.left, record->around.top) : QPoint();
}

HWND WindowShownBy(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        for (auto entry = widgets.constBegin(); entry != widgets.constEnd(); ++entry)
            if (entry.value() == widget)
                return entry.key();
        if (widget->isWindow())
            break;
    }
    return nullptr;
}

void ForEachWidget(const std::function<void(HWND window, QWidget *widget)> &visit)
{
    const QHash<HWND, QWidget *> all = widgets;
    for (auto entry = all.constBegin(); entry != all.constEnd(); ++entry)
        visit(entry.key(), entry.value());
}

static QPalette MakeLightPalette()
{
    QPalette palette(SystemColor(COLOR_BTNFACE), SystemColor(COLOR_BTNFACE));
    palette.setColor(QPalette::WindowText, SystemColor(COLOR_WINDOWTEXT));
    palette.setColor(QPalette::Base, SystemColor(COLOR_WINDOW));
    palette.setColor(QPalette::AlternateBase, SystemColor(COLOR_WINDOW));
    palette.setColor(QPalette::Text, SystemColor(COLOR_WINDOWTEXT));
    palette.setColor(QPalette::ButtonText, SystemColor(COLOR_BTNTEXT));
    palette.setColor(QPalette::Highlight, SystemColor(COLOR_HIGHLIGHT));
    palette.setColor(QPalette::HighlightedText, SystemColor(COLOR_HIGHLIGHTTEXT));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, SystemColor(COLOR_GRAYTEXT));
    return palette;
}

const QPalette &LightPalette()
{
    static const QPalette palette = MakeLightPalette();
    return palette;
}
