#include "platform/native/qt/tree_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <utility>

#include "platform/native/comctl/image_list.h"
#include "platform/native/comctl/tree.h"
#include "platform/native/comctl/tree_user.h"
#include "platform/native/no_memory.h"
#include "platform/native/qt/registry.h"
#include "platform/native/qt/text.h"
#include "platform/native/user/control_font.h"
#include "platform/native/user/input.h"
#include "platform/native/user/painting.h"

static const QString treeName = QStringLiteral("Resources");

TreeModel::TreeModel(HWND tree, QObject *parent) : QAbstractItemModel(parent), window(tree)
{
}

void TreeModel::Renew()
{
    beginResetModel();
    endResetModel();
}

HTREEITEM TreeModel::ItemAt(const QModelIndex &index)
{
    return index.isValid() ? reinterpret_cast<HTREEITEM>(index.internalId()) : nullptr;
}

QModelIndex TreeModel::IndexOf(HTREEITEM item) const
{
    const int position = item ? TreePosition(window, item) : -1;
    return position < 0 ? QModelIndex()
                        : createIndex(position, 0, reinterpret_cast<quintptr>(item));
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex &parent) const
{
    const HTREEITEM item = column == 0 ? TreeChildAt(window, ItemAt(parent), row) : nullptr;
    return item ? createIndex(row, 0, reinterpret_cast<quintptr>(item)) : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex &child) const
{
    return IndexOf(TreeParent(window, ItemAt(child)));
}

int TreeModel::rowCount(const QModelIndex &parent) const
{
    return CountTreeChildren(window, ItemAt(parent));
}

int TreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

// The pixels stay the list's.
static QImage ListImage(HIMAGELIST list, int index)
{
    ListPicture picture;
    if (!FindListPicture(list, index, &picture))
        return {};
    return QImage(reinterpret_cast<const uchar *>(picture.pixels), picture.width, picture.height,
                  picture.width * 4, QImage::Format_RGB32);
}

// Each file brings a list of its own with the same pictures. Qt keeps pixels of every icon there
// was, so another is made only for other pictures.
const QIcon &TreeModel::KeepIcon(int image, int selectedImage) const
{
    const QImage normal = ListImage(TreeImages(window), image);
    const QImage selected = ListImage(TreeImages(window), selectedImage);
    TreeIcon &kept = icons[{image, selectedImage}];
    if (kept.normal != normal || kept.selected != selected) {
        kept = {normal.copy(), selected.copy(), {}};
        kept.icon.addPixmap(QPixmap::fromImage(kept.normal), QIcon::Normal);
        kept.icon.addPixmap(QPixmap::fromImage(kept.selected), QIcon::Selected);
    }
    return kept.icon;
}

QIcon TreeModel::IconOf(int image, int selectedImage) const
{
    return UnlessMemoryRunsOut(QIcon(), [=, this] { return KeepIcon(image, selectedImage); });
}

// What screen readers do not find out by themselves.
QString TreeModel::PlaceOf(const QModelIndex &index) const
{
    int level = 1;
    for (QModelIndex above = parent(index); above.isValid(); above = parent(above))
        ++level;
    return QStringLiteral("level %1, %2 of %3")
        .arg(level)
        .arg(index.row() + 1)
        .arg(rowCount(parent(index)));
}

QVariant TreeModel::headerData(int, Qt::Orientation, int role) const
{
    return role == Qt::AccessibleTextRole ? QVariant(treeName) : QVariant();
}

QVariant TreeModel::data(const QModelIndex &index, int role) const
{
    TreeItemLook look;
    if (!GetTreeItemLook(window, ItemAt(index), &look))
        return {};
    switch (role) {
    case Qt::DisplayRole: return AsDrawn(FromCodePage(*look.label));
    case Qt::AccessibleDescriptionRole: return PlaceOf(index);
    case Qt::DecorationRole: return IconOf(look.image, look.selectedImage);
    default: return {};
    }
}

TreeWidget::TreeWidget(HWND tree, QWidget *parent)
    : QTreeView(parent), window(tree), items(new TreeModel(tree, this))
{
    setPalette(LightPalette());
    setCursor(Qt::ArrowCursor);
    setFrameStyle(WindowOf(tree)->style & WS_BORDER ? QFrame::Box | QFrame::Plain
                                                    : QFrame::NoFrame);
    setModel(items);
    setHeaderHidden(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideNone);
    setSelectionBehavior(SelectItems); // whole rows would be highlighted
    setIconSize({16, 14});
    setAccessibleName(treeName);
    for (const auto signal : {&QTreeView::expanded, &QTreeView::collapsed})
        connect(this, signal, this, [this] { ReportTreeEvent(window, TVN_ITEMEXPANDEDA); });
    for (const QScrollBar *bar : {verticalScrollBar(), horizontalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, [this] { ReportRepaint(window); });
}

void TreeWidget::NoteChange()
{
    isChanged = true;
}

void TreeWidget::TakeInChange()
{
    if (!std::exchange(isChanged, false))
        return;
    items->Renew();
    ReportRepaint(window);
}

void TreeWidget::FollowFont()
{
    setFont(QtFont(FontOf(window)));
}

// The font of a tree that shows before it was given one; loading it earlier is in vain, mostly.
bool TreeWidget::event(QEvent *event)
{
    if (event->type() == QEvent::Polish)
        FollowFont();
    return QTreeView::event(event);
}

void TreeWidget::mousePressEvent(QMouseEvent *event)
{
    const QPoint place = event->position().toPoint();
    if (event->button() == Qt::RightButton) {
        // It selects nothing: the context menu acts on what is selected.
        ReportMouse(window, WM_RBUTTONDOWN, place.x(), place.y());
        return;
    }
    QTreeView::mousePressEvent(event);
    ReportTreeEvent(window, NM_CLICK);
}

void TreeWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        mousePressEvent(event);
        return;
    }
    QTreeView::mouseDoubleClickEvent(event);
    ReportTreeEvent(window, NM_DBLCLK);
}

void TreeWidget::keyPressEvent(QKeyEvent *event)
{
    ReportTreeEvent(window, TVN_KEYDOWN);
    QTreeView::keyPressEvent(event);
}

void TreeWidget::contextMenuEvent(QContextMenuEvent *event)
{
    // A press of the mouse has been reported already.
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QRect seen = visualRect(currentIndex()) & viewport()->rect();
    const QPoint place =
        seen.isEmpty() ? viewport()->rect().center() : QPoint(seen.center().x(), seen.bottom());
    ReportMouse(window, WM_RBUTTONDOWN, place.x(), place.y());
}

// The frame shows the focus: an empty tree has no item that could.
void TreeWidget::initStyleOption(QStyleOptionFrame *option) const
{
    QTreeView::initStyleOption(option);
    if (hasFocus())
        option->palette.setColor(QPalette::WindowText, palette().color(QPalette::Highlight));
}

// The pictures have a ground of their own: only the label is highlighted.
void TreeWidget::initViewItemOption(QStyleOptionViewItem *option) const
{
    QTreeView::initViewItemOption(option);
    option->showDecorationSelected = false;
}

void TreeWidget::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const
{
    painter->fillRect(rect, palette().base());
    QTreeView::drawBranches(painter, rect, index);
}

void TreeWidget::focusInEvent(QFocusEvent *event)
{
    QTreeView::focusInEvent(event);
    update();
}

void TreeWidget::focusOutEvent(QFocusEvent *event)
{
    QTreeView::focusOutEvent(event);
    update();
}

void TreeWidget::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    ReportRepaint(window);
    const HTREEITEM item =
        selected.isEmpty() ? nullptr : TreeModel::ItemAt(selected.indexes().first());
    if (item && item != TreeSelection(window))
        ReportTreeSelection(window, item);
}
