// The tree control as a Qt view over the quiet half's items. Both classes belong to their parent
// object, and show nothing once their window is gone.
#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <QImage>
#include <QTreeView>

#include "platform/win32/comctl.h"

// An item's icon and the pictures that it was made of.
struct TreeIcon {
    QImage normal;
    QImage selected;
    QIcon icon;
};

// Reads the items each time it is asked. Positions carry the items' handles, which find nothing
// once the items are gone.
class TreeModel : public QAbstractItemModel
{
  public:
    TreeModel(HWND tree, QObject *parent);

    // The items are others.
    void Renew();

    // The item at a position, NULL at an invalid one; the position of an item, invalid for NULL and
    // for a dead one.
    static HTREEITEM ItemAt(const QModelIndex &index);
    QModelIndex IndexOf(HTREEITEM item) const;

    QModelIndex index(int row, int column, const QModelIndex &parent) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent) const override;
    int columnCount(const QModelIndex &parent) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    const QIcon &KeepIcon(int image, int selectedImage) const;
    QIcon IconOf(int image, int selectedImage) const; // none when memory runs out
    QString PlaceOf(const QModelIndex &index) const;

    HWND window;
    mutable QHash<QPair<int, int>, TreeIcon> icons;
};

// Shows the tree, and reports what the user does in it.
class TreeWidget : public QTreeView
{
  public:
    TreeWidget(HWND tree, QWidget *parent);

    // The items or pictures are others: TakeInChange reads them, before events are run and before
    // the view must show.
    void NoteChange();
    void TakeInChange();

    // Takes over the window's font.
    void FollowFont();

  protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void initStyleOption(QStyleOptionFrame *option) const override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;
    void drawBranches(QPainter *painter, const QRect &rect,
                      const QModelIndex &index) const override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;

  private:
    HWND window;
    TreeModel *items;
    bool isChanged = false;
};
