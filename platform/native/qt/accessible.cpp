#include "platform/native/qt/accessible.h"

#include <QAccessibleWidget>

#include "platform/native/no_memory.h"
#include "platform/native/qt/frames.h"
#include "platform/native/qt/text.h"
#include "platform/native/user/button.h"
#include "platform/native/user/static_text.h"
#include "platform/native/user/text_lines.h"
#include "platform/native/user/window_table.h"

// An owner-drawn button of the main window is a place where the program shows something: its text
// is what was written there. In dialogs it is a picture.
static QAccessible::Role RoleOf(HWND window)
{
    const Window *record = WindowOf(window);
    if (!record || !record->parent)
        return QAccessible::Pane;
    if (IsOwnerDrawn(window))
        return FrameOf(WindowOf(window))->owner ? QAccessible::Graphic : QAccessible::EditableText;
    return (record->style & SS_TYPEMASK) == SS_ICON ? QAccessible::Graphic
                                                    : QAccessible::StaticText;
}

namespace
{

class SurfaceAccessible : public QAccessibleWidget, public QAccessibleTextInterface
{
  public:
    explicit SurfaceAccessible(SurfaceWidget *shown)
        : QAccessibleWidget(shown, RoleOf(shown->Shown())), surface(shown)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface && role() == QAccessible::EditableText)
            return static_cast<QAccessibleTextInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text what) const override
    {
        return UnlessMemoryRunsOut(QString(), [=, this] { return NameOf(what); });
    }

    QString NameOf(QAccessible::Text what) const
    {
        const Window *record = WindowOf(surface->Shown());
        if (what != QAccessible::Name || !record)
            return QAccessibleWidget::text(what);
        switch (role()) {
        case QAccessible::EditableText: return QStringLiteral("View");
        case QAccessible::Graphic: return QStringLiteral("Picture");
        case QAccessible::StaticText: return FromCodePage(WithoutMnemonic(record->text));
        default: return FromCaption(record->text);
        }
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = state.multiLine = role() == QAccessible::EditableText;
        return state;
    }

    QString text(int from, int to) const override
    {
        return surface->ShownText().mid(from, to - from);
    }

    int characterCount() const override
    {
        return static_cast<int>(surface->ShownText().size());
    }

    QRect characterRect(int) const override
    {
        return rect();
    }

    // Nothing in it can be selected, and it has no caret.
    void selection(int, int *from, int *to) const override
    {
        *from = *to = 0;
    }
    int selectionCount() const override
    {
        return 0;
    }
    void addSelection(int, int) override
    {
    }
    void removeSelection(int) override
    {
    }
    void setSelection(int, int, int) override
    {
    }
    int cursorPosition() const override
    {
        return 0;
    }
    void setCursorPosition(int) override
    {
    }
    int offsetAtPoint(const QPoint &) const override
    {
        return -1;
    }
    void scrollToSubstring(int, int) override
    {
    }
    QString attributes(int, int *from, int *to) const override
    {
        *from = 0;
        *to = characterCount();
        return {};
    }

  private:
    SurfaceWidget *surface;
};

} // namespace

static QAccessibleInterface *MakeInterface(QObject *object)
{
    if (auto *surface = dynamic_cast<SurfaceWidget *>(object))
        return new SurfaceAccessible(surface);
    if (auto *frame = dynamic_cast<FrameWidget *>(object))
        return new QAccessibleWidget(frame, frame->parentWidget() ? QAccessible::Dialog
                                                                  : QAccessible::Window);
    return nullptr;
}

static QAccessibleInterface *MakeAccessible(const QString &, QObject *object)
{
    return UnlessMemoryRunsOut<QAccessibleInterface *>(nullptr,
                                                       [=] { return MakeInterface(object); });
}

void InstallAccessibles()
{
    QAccessible::installFactory(MakeAccessible);
}
