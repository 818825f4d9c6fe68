// Which Qt widget shows which window, and the end of widgets.
#pragma once

#include <QPalette>
#include <QWidget>
#include <functional>

#include "platform/win32/types.h"

// The widget of a window: a control's own, of a top-level window the client area's. NULL for none.
// Qt owns it, through its parent widget or, for a frame without an owner, DropWidget.
QWidget *WidgetOf(HWND window);

// Notes the widget of a new window. It stays until DropWidget.
void EnterWidget(HWND window, QWidget *widget);

// The window goes: its widget is known no more, and the outermost widget made for it (its frame, or
// the widget itself) goes as in DropLater.
void DropWidget(HWND window, QWidget *outermost);

// Hides a widget and takes it over: DeleteDropped deletes it, unless its parent did before.
void DropLater(QWidget *widget);

// Deletes what was dropped. Called where no event of a widget is under way.
void DeleteDropped();

// Where a window's client area begins in its widget: a child's lies inside its border, a frame's is
// the whole widget.
QPoint ClientCorner(HWND window);

// The window that a widget, or the nearest one around it in the same frame, shows; NULL for none.
HWND WindowShownBy(const QWidget *widget);

// Called for every window that has a widget now; it may enter and drop widgets.
void ForEachWidget(const std::function<void(HWND window, QWidget *widget)> &visit);

// The fixed light colours of our own windows, whatever the desktop's theme is.
const QPalette &LightPalette();
