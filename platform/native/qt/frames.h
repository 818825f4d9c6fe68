// Top-level windows: frame, menu bar, client area and overlay. Sizes are in logical pixels.
#pragma once

#include <QMenuBar>
#include <QTimer>

#include "platform/native/qt/controls.h"
#include "platform/win32/types.h"

// The frame of one window. It makes its menu bar, client area and overlay and owns them; an owner's
// frame owns it, and a dialog keeps its owner from input.
class FrameWidget : public QWidget
{
  public:
    // owner: the frame of the window's owner, or NULL.
    FrameWidget(HWND window, QWidget *owner);

    SurfaceWidget *Client() const
    {
        return client;
    }

    // Make what the user sees as the quiet half's record is; nothing for a window that is gone.
    void FollowRect();
    void FollowText();
    void FollowShown();
    void FollowMenuStates();
    void FollowOverlay();

    // The widths of what lies around the client area: the manager's frame, once it is known, and
    // the menu bar.
    RECT Around() const;

    // Tells the quiet half where the window is (ReportRect), when it shows and that is news.
    void ReportPlace();

  protected:
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

  private:
    int MenuHeight() const;
    QMargins Margins() const; // the manager's frame; none until it is known
    void LayOut();
    void FitFirstFrame();

    HWND window;
    bool isFrameKnown = false;
    // What was asked for before that: the inside on the desktop, and the size with the frame.
    QRect firstInside;
    QSize firstOuter;
    QMenuBar *menuBar;
    SurfaceWidget *client;
    OverlayWidget *overlay;
    QTimer settling; // runs from each change of the place on
};

// The frame that shows a top-level window; NULL for others and for dead ones.
FrameWidget *FrameShowing(HWND window);

// Gives a top-level window that shows the keyboard, as when a dialog above it closes. A window
// manager gives it to none when two of them close at once.
void ActivateFrame(HWND window);
