// The widgets of windows that the quiet half paints, of push buttons, and of the overlay. Each
// belongs to its parent widget, and may outlive its window by a little: it then shows nothing.
#pragma once

#include <QPushButton>
#include <QWidget>

#include "platform/win32/types.h"

// Shows a window's pixels, with the line around it that WS_BORDER asks for, and reports its mouse
// and its keys. An owner-drawn button looks the same with the keyboard's focus as without, so that
// is shown by a frame.
class SurfaceWidget : public QWidget
{
  public:
    SurfaceWidget(HWND window, QWidget *parent);

    // The window that it shows; a dead handle once that is gone.
    HWND Shown() const
    {
        return window;
    }

    // A line of text was drawn on the window's pixels.
    void NoteLine(const QString &line);

    // The pixels have been painted: the lines noted since the last time are what shows, and screen
    // readers are told of an owner-drawn button's.
    void NotePainted();

    // The lines that the last painting drew, a line feed between them.
    const QString &ShownText() const
    {
        return shownText;
    }

  protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

  private:
    void Report(UINT message, const QMouseEvent *event);

    HWND window;
    QString shownText;
    QStringList drawnLines;
};

// Shows what was drawn above a window's children; the mouse goes through it.
class OverlayWidget : public QWidget
{
  public:
    OverlayWidget(HWND window, QWidget *parent);

    // Shows itself where the window's overlay covers, or hides.
    void Follow();

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    HWND window;
};

// Shows a push button, and reports when it is pressed.
class PushButtonWidget : public QPushButton
{
  public:
    PushButtonWidget(HWND window, QWidget *parent);

    // Takes over the window's text and font.
    void FollowText();

  private:
    HWND window;
};
