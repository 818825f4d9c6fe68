// Which Qt widget shows which window.
#pragma once

#include <QPalette>
#include <QWidget>
#include <functional>

#include "platform/native/visible.h"

// The widget of a window: a control's own, of a top-level window the client area's. NULL for none.
QWidget *WidgetOf(HWND window);
void EnterWidget(HWND window, QWidget *widget);

// The window goes: its widget shows no more, and is deleted when no event is under way.
void DropWidget(HWND window, QWidget *outermost);
void DropLater(QWidget *widget);
void DeleteDropped();

// The window that a widget, or the nearest one around it, shows; NULL for none.
HWND WindowShownBy(const QWidget *widget);

// Called for every window that has a widget.
void ForEachWidget(const std::function<void(HWND window, QWidget *widget)> &visit);

// The fixed light colours of our own windows, whatever the desktop's theme is.
const QPalette &LightPalette();
