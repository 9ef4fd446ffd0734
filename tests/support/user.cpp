#include "support/user.h"

#include "platform/qt/text.h"
#include "platform/toolkit/events.h"
#include "platform/toolkit/menu.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QEvent>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace vantrel {

namespace {

/// The widget that takes the keys of a control.
QWidget* KeyTarget(QWidget* control) {
    if (auto* combo = qobject_cast<QComboBox*>(control); combo && combo->isEditable()) return combo->lineEdit();
    return control;
}

QWidget* VisibleWindow(const std::string& name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->objectName() == ToQt(name)) return window;
    return nullptr;
}

/// What the edges of its window, or page, leave of a control.
QRect PartInSight(const QWidget* control) {
    QRect part = control->rect();
    for (; !control->isWindow(); control = control->parentWidget())
        part = part.translated(control->pos()) & control->parentWidget()->rect();
    return part;
}

QAbstractItemView* GridIn(QWidget* control) {
    auto* view = qobject_cast<QAbstractItemView*>(control);
    if (!view) ADD_FAILURE() << "no grid";
    return view;
}

QModelIndex CellOf(QWidget* control, int row, int col) {
    QAbstractItemView* view = GridIn(control);
    if (!view) return {};
    const QModelIndex index = view->model()->index(row, col);
    if (!index.isValid()) ADD_FAILURE() << "no cell (" << row << ", " << col << ")";
    return index;
}

QTabWidget* TabsIn(QWidget* control, int page) {
    auto* tabs = qobject_cast<QTabWidget*>(control);
    if (!tabs || page < 0 || page >= tabs->count()) {
        ADD_FAILURE() << "no page " << page;
        return nullptr;
    }
    return tabs;
}

QAction* EntryNamed(const std::string& name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            if (auto* action = window->findChild<QAction*>(ToQt(name))) return action;
    ADD_FAILURE() << "no menu entry " << name;
    return nullptr;
}

int beeps = 0;

}  // namespace
}  // namespace vantrel

// Takes the place of Qt's own in the tests: without a display a beep leaves no trace.
void QApplication::beep() { ++vantrel::beeps; }

namespace vantrel {

int User::Beeps() { return beeps; }

User::User() { qApp->installEventFilter(this); }

User::~User() {
    qApp->removeEventFilter(this);
    for (const Script& script : window_scripts_) ADD_FAILURE() << "window " << script.on << " never came up";
    for (const Script& script : message_scripts_) ADD_FAILURE() << "no message with \"" << script.on << "\" came up";
}

// ---------------------------------------------------------------------------------------------------------- looking

QWidget* User::FindWindow(const std::string& window) const {
    QWidget* found = VisibleWindow(window);
    if (!found) ADD_FAILURE() << "window " << window << " is not on the screen";
    return found;
}

QWidget* User::FindControl(const std::string& window, const std::string& control) const {
    QWidget* const frame = FindWindow(window);
    QWidget* const found = frame ? frame->findChild<QWidget*>(ToQt(control)) : nullptr;
    if (frame && !found) ADD_FAILURE() << "window " << window << " has no control " << control;
    return found;
}

bool User::Sees(const std::string& window) const { return VisibleWindow(window) != nullptr; }

bool User::Sees(const std::string& window, const std::string& control) const {
    const QWidget* found = FindControl(window, control);
    return found && found->isVisible() && !PartInSight(found).isEmpty();
}

bool User::Enabled(const std::string& window, const std::string& control) const {
    const QWidget* found = FindControl(window, control);
    return found && found->isEnabled();
}

std::string User::Text(const std::string& window, const std::string& control) const {
    QWidget* found = FindControl(window, control);
    if (auto* edit = qobject_cast<QLineEdit*>(found)) return FromQt(edit->text());
    if (auto* combo = qobject_cast<QComboBox*>(found)) return FromQt(combo->currentText());
    if (auto* picker = qobject_cast<QDateTimeEdit*>(found)) return FromQt(picker->text());
    if (auto* label = qobject_cast<QLabel*>(found)) return FromQt(label->text());
    if (auto* button = qobject_cast<QAbstractButton*>(found)) return FromCaption(button->text());
    if (auto* box = qobject_cast<QGroupBox*>(found)) return FromCaption(box->title());
    if (found) ADD_FAILURE() << control << " has no text";
    return "";
}

std::string User::ToolTip(const std::string& window, const std::string& control) const {
    const QWidget* found = FindControl(window, control);
    return found ? FromQt(found->toolTip()) : "";
}

std::string User::Caption(const std::string& window) const {
    const QWidget* found = FindWindow(window);
    return found ? FromQt(found->windowTitle()) : "";
}

bool User::Checked(const std::string& window, const std::string& control) const {
    auto* button = qobject_cast<QAbstractButton*>(FindControl(window, control));
    if (!button) ADD_FAILURE() << control << " has no tick";
    return button && button->isChecked();
}

int User::Index(const std::string& window, const std::string& control) const {
    QWidget* found = FindControl(window, control);
    if (auto* combo = qobject_cast<QComboBox*>(found)) return combo->currentIndex();
    if (auto* tabs = qobject_cast<QTabWidget*>(found)) return tabs->currentIndex();
    if (auto* list = qobject_cast<QListWidget*>(found)) {
        const QModelIndexList selected = list->selectionModel()->selectedIndexes();
        return selected.isEmpty() ? -1 : selected.constFirst().row();
    }
    if (found && found->property("value").isValid()) return found->property("value").toInt();
    if (found) ADD_FAILURE() << control << " has no index";
    return -1;
}

std::vector<std::string> User::Entries(const std::string& window, const std::string& control) const {
    std::vector<std::string> entries;
    QWidget* found = FindControl(window, control);
    auto* combo = qobject_cast<QComboBox*>(found);
    auto* list = qobject_cast<QListWidget*>(found);
    if (!combo && !list) ADD_FAILURE() << control << " is no combo and no list";
    for (int i = 0; combo && i < combo->count(); ++i) entries.push_back(FromQt(combo->itemText(i)));
    for (int i = 0; list && i < list->count(); ++i) entries.push_back(FromQt(list->item(i)->text()));
    return entries;
}

std::string User::CellText(const std::string& window, const std::string& grid, int row, int col) const {
    return FromQt(CellOf(FindControl(window, grid), row, col).data(Qt::DisplayRole).toString());
}

Colour User::CellColour(const std::string& window, const std::string& grid, int row, int col) const {
    return FromQt(CellOf(FindControl(window, grid), row, col).data(Qt::BackgroundRole).value<QColor>());
}

int User::RowCount(const std::string& window, const std::string& grid) const {
    QAbstractItemView* view = GridIn(FindControl(window, grid));
    return view ? view->model()->rowCount() : -1;
}

int User::ColCount(const std::string& window, const std::string& grid) const {
    QAbstractItemView* view = GridIn(FindControl(window, grid));
    return view ? view->model()->columnCount() : -1;
}

bool User::SeesTab(const std::string& window, const std::string& tabs, int page) const {
    QTabWidget* found = TabsIn(FindControl(window, tabs), page);
    return found && found->isTabVisible(page);
}

std::string User::TabText(const std::string& window, const std::string& tabs, int page) const {
    QTabWidget* found = TabsIn(FindControl(window, tabs), page);
    return found ? FromCaption(found->tabText(page)) : "";
}

bool User::MenuEnabled(const std::string& entry) const {
    QAction* action = EntryNamed(entry);
    return action && action->isEnabled();
}

// ----------------------------------------------------------------------------------------------------------- acting

QWidget* User::Usable(const std::string& window) const {
    QWidget* frame = FindWindow(window);
    QWidget* modal = QApplication::activeModalWidget();
    if (frame && modal && modal != frame && !frame->isModal()) {
        ADD_FAILURE() << "window " << window << " is blocked by " << FromQt(modal->objectName());
        return nullptr;
    }
    return frame;
}

QWidget* User::Usable(const std::string& window, const std::string& control) const {
    if (!Usable(window)) return nullptr;
    QWidget* found = FindControl(window, control);
    if (!found) return nullptr;
    if (!found->isVisible()) ADD_FAILURE() << control << " of " << window << " is not to be seen";
    if (!found->isEnabled()) ADD_FAILURE() << control << " of " << window << " is disabled";
    return found->isVisible() && found->isEnabled() ? found : nullptr;
}

void User::Click(const std::string& window, const std::string& control) {
    QWidget* target = Usable(window, control);
    if (!target) return;
    QPoint at = target->rect().center();
    if (qobject_cast<QAbstractButton*>(target)) at.setX(std::min(at.x(), 8));  // the mark of a check box
    QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, at);
    DoEvents();
}

void User::ClickCell(const std::string& window, const std::string& grid, int row, int col) {
    QWidget* target = Usable(window, grid);
    QAbstractItemView* view = target ? GridIn(target) : nullptr;
    if (!view) return;
    const QModelIndex cell = CellOf(view, row, col);
    view->scrollTo(cell);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(cell).center());
    DoEvents();
}

void User::ClickTab(const std::string& window, const std::string& tabs, int page) {
    QWidget* target = Usable(window, tabs);
    QTabWidget* strip = target ? TabsIn(target, page) : nullptr;
    if (!strip) return;
    EXPECT_TRUE(strip->isTabVisible(page)) << "tab " << page << " of " << tabs << " is hidden";
    QTest::mouseClick(strip->tabBar(), Qt::LeftButton, Qt::NoModifier, strip->tabBar()->tabRect(page).center());
    DoEvents();
}

void User::Type(const std::string& window, const std::string& control, const std::string& text) {
    QWidget* target = Usable(window, control);
    if (!target) return;
    auto* edit = qobject_cast<QLineEdit*>(KeyTarget(target));
    if (edit) edit->selectAll();
    if (edit && text.empty()) QTest::keyClick(edit, Qt::Key_Delete);
    TypeOn(window, control, text);
}

void User::TypeOn(const std::string& window, const std::string& control, const std::string& text) {
    QWidget* target = Usable(window, control);
    if (!target) return;
    target->setFocus();
    const QPointer<QWidget> keys = KeyTarget(target);
    for (const QChar character : ToQt(text))
        if (keys) QTest::keyClick(keys, character.toLatin1());
    DoEvents();
}

void User::Paste(const std::string& window, const std::string& control, const std::string& text) {
    QWidget* target = Usable(window, control);
    auto* edit = target ? qobject_cast<QLineEdit*>(KeyTarget(target)) : nullptr;
    if (!edit) return;
    QApplication::clipboard()->setText(ToQt(text));
    edit->selectAll();
    QTest::keySequence(edit, QKeySequence::Paste);
    DoEvents();
}

void User::Pick(const std::string& window, const std::string& combo, const std::string& entry) {
    auto* box = qobject_cast<QComboBox*>(Usable(window, combo));
    if (!box) return;
    const int at = box->findText(ToQt(entry), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (at < 0) {
        ADD_FAILURE() << combo << " of " << window << " has no entry " << entry;
        return;
    }
    box->setFocus();
    box->showPopup();
    box->view()->setCurrentIndex(box->model()->index(at, box->modelColumn(), box->rootModelIndex()));
    QTest::keyClick(box->view(), Qt::Key_Return);
    DoEvents();
}

void User::Choose(const std::string& window, const std::string& list, const std::string& entry) {
    auto* entries = qobject_cast<QListWidget*>(Usable(window, list));
    if (!entries) return;
    const auto found = entries->findItems(ToQt(entry), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found.size() != 1) {
        ADD_FAILURE() << list << " of " << window << " has " << found.size() << " entries " << entry;
        return;
    }
    entries->scrollToItem(found.front());
    QTest::mouseClick(entries->viewport(), Qt::LeftButton, Qt::NoModifier,
                      entries->visualItemRect(found.front()).center());
    DoEvents();
}

void User::Press(const std::string& window, const std::string& control, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* target = Usable(window, control);
    if (!target) return;
    target->setFocus();
    QTest::keyClick(target, key, modifiers);
    DoEvents();
}

void User::Press(const std::string& window, Qt::Key key) {
    QWidget* frame = Usable(window);
    if (!frame) return;
    QTest::keyClick(frame->focusWidget() ? frame->focusWidget() : frame, key);
    DoEvents();
}

void User::Close(const std::string& window) {
    if (QWidget* frame = Usable(window)) frame->close();
    DoEvents();
}

void User::Menu(const std::string& entry) {
    QAction* action = EntryNamed(entry);
    if (!action) return;
    if (QWidget* modal = QApplication::activeModalWidget()) {
        ADD_FAILURE() << "the menu is blocked by " << FromQt(modal->objectName());
        return;
    }
    EXPECT_TRUE(action->isEnabled()) << "menu entry " << entry << " is disabled";
    action->trigger();
    DoEvents();
}

void User::Move(const std::string& window, const std::string& control, int value) {
    QWidget* target = Usable(window, control);
    if (!target) return;
    EXPECT_TRUE(target->setProperty("value", value)) << control << " has no value";
    DoEvents();
}

// ------------------------------------------------------------------------------------------ what comes up by itself

void User::WhenMessage(const std::string& part, const Action& action) { message_scripts_.push_back({part, action}); }

void User::AnswerNo(const std::string& part) {
    message_scripts_.push_back({part, [] {}, true});
}

void User::WhenShown(const std::string& window, const Action& action) { window_scripts_.push_back({window, action}); }

std::optional<User::Script> User::Take(std::deque<Script>& scripts, const std::function<bool(const Script&)>& fits) {
    const auto found = std::ranges::find_if(scripts, fits);
    if (found == scripts.end()) return {};
    Script script = *found;
    scripts.erase(found);
    return script;
}

bool User::eventFilter(QObject* on, QEvent* event) {
    auto* window = event->type() == QEvent::Show ? qobject_cast<QWidget*>(on) : nullptr;
    if (window && window->isWindow() && window->windowType() != Qt::Popup && window->windowType() != Qt::ToolTip) {
        const QPointer<QWidget> kept = window;
        QMetaObject::invokeMethod(
            this, [this, kept] { Appeared(kept); }, Qt::QueuedConnection);
    }
    return false;
}

void User::Appeared(const QPointer<QWidget>& window) {
    if (!window || !window->isVisible()) return;
    if (auto* box = qobject_cast<QMessageBox*>(window)) {
        MessageAppeared(*box);
    } else if (auto* chooser = qobject_cast<QColorDialog*>(window)) {
        offered_color_ = FromQt(chooser->currentColor());
        if (colours_.empty()) return CloseLeftOpen(window, "has no answer");
        const std::optional<Colour> answer = colours_.front();
        colours_.pop_front();
        if (answer) chooser->setCurrentColor(ToQt(*answer));
        answer ? chooser->accept() : chooser->reject();
    } else if (auto* files = qobject_cast<QFileDialog*>(window)) {
        if (files_.empty()) return CloseLeftOpen(window, "has no answer");
        const std::string answer = files_.front();
        files_.pop_front();
        if (answer.empty()) return files->reject();
        files->selectFile(ToQt(answer));
        static_cast<QDialog*>(files)->accept();
        Appeared(window);  // asks again where the answer was taken back
    } else {
        WindowAppeared(window);
    }
}

void User::MessageAppeared(QMessageBox& box) {
    const QPointer<QMessageBox> kept = &box;
    const std::string text = FromQt(box.text());
    messages_.push_back(text);
    const auto script = Take(message_scripts_, [&](const Script& it) { return text.find(it.on) != std::string::npos; });
    if (script) script->action();
    if (!kept || !kept->isVisible()) return;  // answered by the action
    const bool no = script && script->no;
    QAbstractButton* button = box.button(no ? QMessageBox::No : QMessageBox::Ok);
    if (!button && !no) button = box.button(QMessageBox::Yes);
    if (button)
        button->click();
    else
        CloseLeftOpen(QPointer<QWidget>(kept.data()), "lacks the button");
}

void User::WindowAppeared(const QPointer<QWidget>& window) {
    const std::string name = FromQt(window->objectName());
    const auto script = Take(window_scripts_, [&](const Script& it) { return it.on == name; });
    if (script) script->action();
    if (window && window->isVisible() && window->isModal())
        CloseLeftOpen(window, script ? "was left open" : "came up unexpectedly");
}

// Twice by its close box; if that does not help, by force.
void User::CloseLeftOpen(const QPointer<QWidget>& window, const std::string& why) {
    ADD_FAILURE() << "window " << FromQt(window->objectName()) << " \"" << FromQt(window->windowTitle()) << "\" "
                  << why;
    if (auto* dialog = qobject_cast<QDialog*>(window)) return dialog->reject();
    for (int i = 0; i < 2 && window && window->isVisible(); ++i) window->close();
    if (!window || !window->isVisible()) return;
    std::fprintf(stderr, "a modal window cannot be closed\n");
    std::_Exit(1);
}

}  // namespace vantrel
