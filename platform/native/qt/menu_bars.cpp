#include "platform/native/qt/menu_bars.h"

#include <QMenu>
#include <QPointer>
#include <QTimer>
#include <memory>

#include "platform/native/no_memory.h"
#include "platform/native/qt/registry.h"
#include "platform/native/qt/text.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/window_table.h"

static QPointer<QMenu> shownMenu;

static void FillMenu(QMenu *shown, HMENU menu)
{
    const Menu *record = MenuOf(menu);
    if (!record)
        return;
    for (const MenuItem &item : record->items) {
        if (item.flags & MF_SEPARATOR) {
            shown->addSeparator();
        } else if (item.submenu) {
            FillMenu(shown->addMenu(FromCodePage(item.text)), item.submenu);
        } else {
            QAction *action = shown->addAction(FromCodePage(item.text));
            action->setData(item.id);
            action->setEnabled(!(item.flags & (MF_GRAYED | MF_DISABLED)));
        }
    }
}

static void FollowStates(const QList<QAction *> &actions, HMENU menu)
{
    for (QAction *action : actions) {
        if (action->menu())
            FollowStates(action->menu()->actions(), menu);
        else if (!action->isSeparator())
            action->setEnabled(!(GetMenuState(menu, action->data().toUInt(), MF_BYCOMMAND) &
                                 (MF_GRAYED | MF_DISABLED)));
    }
}

QMenuBar *MakeMenuBar(HWND window, QWidget *parent)
{
    auto *bar = new QMenuBar(parent);
    // The frame's sizes count on a bar in the window.
    bar->setNativeMenuBar(false);
    bar->setAccessibleName(QStringLiteral("Menu"));
    if (const Menu *record = MenuOf(GetMenu(window)))
        for (const MenuItem &item : record->items)
            FillMenu(bar->addMenu(FromCodePage(item.text)), item.submenu);
    QObject::connect(bar, &QMenuBar::triggered, bar, [window](const QAction *action) {
        PostMessageA(window, WM_COMMAND, action->data().toUInt(), 0);
    });
    return bar;
}

void FollowMenu(HWND window, QMenuBar *bar)
{
    FollowStates(bar->actions(), GetMenu(window));
}

void OpenFirstMenu(QMenuBar *bar)
{
    QAction *first = bar->actions().value(0);
    if (!first || !first->menu())
        return;
    bar->setActiveAction(first);
    first->menu()->setActiveAction(first->menu()->actions().value(0));
}

static void TellClosed(QMenu *shown)
{
    ReportMenuClosed(shown->property("chosen").toUInt());
    shown->deleteLater();
}

static QMenu *MakePopupMenu(QWidget *parent, HMENU menu)
{
    auto made = std::make_unique<QMenu>(parent);
    QMenu *shown = made.get();
    shown->setAccessibleName(QStringLiteral("Context menu"));
    FillMenu(shown, menu);
    // The choice is told after the closing, in the same event.
    QObject::connect(shown, &QMenu::aboutToHide, shown, [shown] {
        if (!DoesMemorySuffice(
                [shown] { QTimer::singleShot(0, shown, [shown] { TellClosed(shown); }); }))
            TellClosed(shown);
    });
    QObject::connect(shown, &QMenu::triggered, shown, [shown](const QAction *action) {
        shown->setProperty("chosen", action->data());
    });
    return made.release();
}

bool ShowPopupMenu(HMENU menu, POINT place, HWND owner)
{
    QWidget *client = WidgetOf(owner);
    const Window *record = WindowOf(owner);
    if (!client || !record) {
        ReportMenuClosed(0);
        return true;
    }
    QMenu *shown = MakePopupMenu(client->window(), menu);
    shownMenu = shown;
    const POINT origin = ClientOriginOf(record);
    shown->popup(client->mapToGlobal(QPoint(place.x - origin.x, place.y - origin.y)));
    if (!shown->isVisible())
        ReportMenuClosed(0);
    return true;
}

void ClosePopupMenu()
{
    if (shownMenu)
        shownMenu->close();
}
