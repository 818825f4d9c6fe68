// The widgets of windows that the quiet half paints, of push buttons, and of the overlay.
#pragma once

#include <QPushButton>
#include <QWidget>

#include "platform/win32/user.h"

// Shows a window's pixels, with the line around it that WS_BORDER asks for, and reports its mouse
// and its keys. An owner-drawn button looks the same with the keyboard's focus as without, so that
// is shown by a frame.
class SurfaceWidget : public QWidget
{
  public:
    SurfaceWidget(HWND window, QWidget *parent);

    HWND Shown() const
    {
        return window;
    }

    // A line of text was drawn on the window's pixels; they have been painted.
    void NoteLine(const QString &line);
    void NotePainted();

    // The lines that the last painting drew.
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
    // Shows itself where the overlay covers.
    void Follow();

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    HWND window;
};

class PushButtonWidget : public QPushButton
{
  public:
    PushButtonWidget(HWND window, QWidget *parent);

    void FollowText();

  private:
    HWND window;
};
