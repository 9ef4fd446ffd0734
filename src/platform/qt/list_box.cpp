#include "platform/errors.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QKeyEvent>
#include <QListWidget>

namespace vantrel {

namespace {

/// Qt makes the first entry the current one as soon as the list gets the focus, without selecting it, and the arrow
/// keys pass it by. Here they begin with it.
class EntryList : public QListWidget {
protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool is_arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
        if (is_arrow && currentItem() && selectedItems().isEmpty())
            currentItem()->setSelected(true);
        else
            QListWidget::keyPressEvent(event);
    }
};

QListWidget& ListOf(QWidget* widget) { return *static_cast<QListWidget*>(widget); }

}  // namespace

ListBox::ListBox(const Place& place, const std::string& name, const Box& box)
    : Control(place, name, box, new EntryList) {
    ListOf(widget_).setUniformItemSizes(true);
    widget_->setAccessibleName(ToQt(name));
}

void ListBox::Clear() { ListOf(widget_).clear(); }

void ListBox::AddItem(const std::string& entry) { ListOf(widget_).addItem(ToQt(entry)); }

int ListBox::ListCount() const { return ListOf(widget_).count(); }

std::string ListBox::List(int i) const {
    const QListWidgetItem* entry = ListOf(widget_).item(i);
    return entry ? FromQt(entry->text()) : "";
}

int ListBox::ListIndex() const {
    const QList<QListWidgetItem*> selected = ListOf(widget_).selectedItems();
    return selected.isEmpty() ? -1 : ListOf(widget_).row(selected.constFirst());
}

void ListBox::SetListIndex(int i) {
    if (i < -1 || i >= ListCount()) throw RunTimeError(kInvalidPropertyValue);
    ListOf(widget_).setCurrentRow(i);
}

std::string ListBox::Text() const { return List(ListIndex()); }

}  // namespace vantrel
