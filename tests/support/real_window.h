// Drives the program in its real windows, by events of Qt's.
#pragma once

#include "platform/native/qt/registry.h"
#include "platform/native/user/queue.h"
#include "platform/native/visible.h"
#include "program/globals.h"
#include "program/ids.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTreeView>

// Dispatches until nothing has come for that many of Qt's steps.
inline void RunUntilIdle(int steps = 3)
{
    for (int idle = 0; idle < steps;) {
        MSG message;
        if (TakeMessage(&message) == Taken::Message) {
            DispatchMessageA(&message);
            idle = 0;
        } else {
            visible.runEvents(false);
            ++idle;
        }
    }
}

inline void SendMouse(QWidget *widget, QEvent::Type type, QPoint place,
                      Qt::MouseButton button = Qt::LeftButton)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, place, widget->mapToGlobal(place), isMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
    RunUntilIdle();
}

inline QWidget *WidgetWithId(int id)
{
    return WidgetOf(GetDlgItem(globals.mainWindow, id));
}

inline QTreeView *Tree()
{
    return dynamic_cast<QTreeView *>(WidgetWithId(IDC_TREE));
}

inline void PressKey(QWidget *widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QApplication::sendEvent(widget, &press);
    QApplication::sendEvent(widget, &release);
}
