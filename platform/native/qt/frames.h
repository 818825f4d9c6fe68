// Top-level windows: frame, menu bar, client area and overlay.
#pragma once

#include <QMenuBar>
#include <QTimer>

#include "platform/native/qt/controls.h"
#include "platform/native/visible.h"

class FrameWidget : public QWidget
{
  public:
    FrameWidget(HWND window, QWidget *owner);

    SurfaceWidget *Client() const
    {
        return client;
    }

    // Make what the user sees as the quiet half's record is.
    void FollowRect();
    void FollowText();
    void FollowShown();
    void FollowMenuStates();
    void FollowOverlay();

    // What lies around the client area: the manager's frame, once it is known, and the menu bar.
    RECT Around() const;

    // Tells the quiet half where the window is, when that is news.
    void ReportPlace();

  protected:
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

  private:
    int MenuHeight() const;
    QMargins Margins() const; // the manager's frame; none until it is known
    void LayOut();

    HWND window;
    QMenuBar *menuBar;
    SurfaceWidget *client;
    OverlayWidget *overlay;
    QTimer settling; // runs from each change of the place on
};

// The frame that shows a top-level window; NULL for others.
FrameWidget *FrameShowing(HWND window);

// Gives a top-level window that shows the keyboard, as when a dialog above it closes. A window
// manager gives it to none when two of them close at once.
void ActivateFrame(HWND window);
