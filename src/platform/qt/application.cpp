#include "platform/qt/application.h"

#include "platform/errors.h"
#include "platform/os/program.h"
#include "platform/qt/dispatcher.h"
#include "platform/qt/icon.h"
#include "platform/qt/session.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/qt/window_frame.h"
#include "platform/toolkit/desktop.h"
#include "platform/toolkit/dialogs.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QColorDialog>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStyle>
#include <QUrl>
#include <QWindow>
#include <cstdio>
#include <cstdlib>

namespace vantrel {

namespace {

bool in_program = false;  // inside the event loop of RunProgram

/// The plain cursor, also while the wait cursor is on: a dialog waits for the user.
class AnswerCursor {
public:
    AnswerCursor() : busy_(QGuiApplication::overrideCursor() != nullptr) {
        if (busy_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~AnswerCursor() {
        if (busy_) QGuiApplication::restoreOverrideCursor();
    }
    AnswerCursor(const AnswerCursor&) = delete;
    AnswerCursor& operator=(const AnswerCursor&) = delete;

private:
    bool busy_;
};

/// Makes `dialog` belong to the window that is in front, without being owned by it: that window may be unloaded while
/// the dialog is open.
void AttachToFront(QDialog& dialog, QWidget* front) {
    dialog.adjustSize();
    dialog.winId();
    if (dialog.windowTitle().isEmpty()) dialog.windowHandle()->setTitle(" ");  // else Qt puts the program's name there
    if (front) dialog.windowHandle()->setTransientParent(front->windowHandle());
    PlaceOver(&dialog, front);
}

/// A message box is as wide as its text; a short text would leave its title no room.
void WidenForTitle(QMessageBox& box) {
    constexpr int kWidth = 220;  // pixels
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(kWidth, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grid->rowCount(), 0, 1,
                      grid->columnCount());
}

int RunDialog(QDialog& dialog) {
    const AnswerCursor cursor;
    const QPointer<QWidget> front = FrontFrame();
    dialog.setWindowModality(Qt::ApplicationModal);
    AttachToFront(dialog, front);
    const int result = dialog.exec();
    if (front && front->isVisible()) front->activateWindow();  // where no window manager does it
    return result;
}

/// Returns the button that was pressed. The last of `buttons` answers Enter and Escape.
int ShowMessage(const QString& title, const std::string& text, QMessageBox::StandardButtons buttons) {
    QMessageBox box(QMessageBox::NoIcon, title, ToQt(text), buttons);
    box.setTextFormat(Qt::PlainText);
    for (QAbstractButton* button : box.buttons()) button->setIcon({});
    if (buttons & QMessageBox::No) box.setDefaultButton(QMessageBox::No);
    WidenForTitle(box);
    return RunDialog(box);
}

}  // namespace

QApplication& SetUpApplication() {
    static QApplication* const application = [] {
        os::FailOversizeWrites();
        static int argc = 1;
        static char name[] = "vantrel";
        static char* argv[] = {name, nullptr};
        QCoreApplication::setApplicationName("VANTREL");
        QGuiApplication::setDesktopFileName("vantrel");
        // Every launch starts alike: what Qt's own dialogs would keep for the next one goes to a file that nobody can
        // write. Windows has no files for that.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ":/none");
        auto* made = new QApplication(argc, argv);
        made->setQuitOnLastWindowClosed(false);
        ApplyLook(*made);
        QApplication::setWindowIcon(Icon("vantrel"));
        return made;
    }();
    return *application;
}

int RunProgram(const Handler& start) {
    QApplication& application = SetUpApplication();
    WatchSessionEnd();
    in_program = true;
    const auto first_event = [&start] {
        Dispatcher::Run(start);
        QuitWithoutWindows();
    };
    QMetaObject::invokeMethod(&application, first_event, Qt::QueuedConnection);
    const int status = QApplication::exec();
    in_program = false;
    return status;
}

void QuitWithoutWindows() {
    if (in_program && !FrontFrame()) QCoreApplication::exit(0);
}

void ExitNow(int status) {
    std::fflush(nullptr);
    std::_Exit(status);
}

void End() { ExitNow(0); }

void DoEvents() {
    constexpr int kAtMostMs = 100;  // events that keep making new ones must not hold the caller for ever
    QCoreApplication::processEvents(QEventLoop::AllEvents, kAtMostMs);
    // This has taken the event that was to wake the loop, which on Windows would wait for another one.
    if (AnyWaitEnds()) QCoreApplication::eventDispatcher()->wakeUp();
}

void MsgBox(const std::string& text) { ShowMessage("VANTREL", text, QMessageBox::Ok); }

MsgBoxResult AskYesNo(const std::string& text) {
    return ShowMessage("", text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes ? kYes : kNo;
}

void Beep() { QApplication::beep(); }

void OpenWebAddress(const std::string& address) {
    if (!os::OpenByInterpreter(address)) QDesktopServices::openUrl(QUrl(ToQt(address)));
}

namespace {

/// The one colour dialog. At its end it would keep the colours that the user made for the next start of every program
/// with Qt, and on Windows no path can send them elsewhere: so it has no end, and begins without those of others.
QColorDialog& ColorDialog() {
    static auto* const dialog = [] {
        for (int i = 0; i < QColorDialog::customCount(); ++i) QColorDialog::setCustomColor(i, Qt::white);
        auto* made = new QColorDialog;
        made->setWindowTitle("Color");
        return made;
    }();
    return *dialog;
}

}  // namespace

Colour ShowColor(Colour start) {
    QColorDialog& dialog = ColorDialog();
    dialog.setCurrentColor(ToQt(start));
    if (QWidget* last_in_use = dialog.focusWidget()) last_in_use->clearFocus();
    return RunDialog(dialog) == QDialog::Accepted ? FromQt(dialog.selectedColor()) : start;
}

namespace {

constexpr const char* kSaveTitle = "Save As";

/// Gives `path` the extension if it has none, and asks for consent if that is a file that is there. False: refused.
bool TakesExtension(QString* path, const std::string& extension) {
    const QFileInfo without(*path);
    if (without.fileName().contains('.')) return true;
    *path += "." + ToQt(extension);
    if (!QFileInfo::exists(*path)) return true;
    const std::string question = FromQt(QFileInfo(*path).fileName()) + " already exists.\nDo you want to replace it?";
    return ShowMessage(kSaveTitle, question, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

}  // namespace

void CommonDialog::ShowSave() {
    QFileDialog dialog;
    dialog.setWindowTitle(kSaveTitle);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(ToQt(Filter));
    if (!FileName.empty()) dialog.selectFile(ToQt(FileName));
    // The desktop's own dialog, in which Qt lays nothing out, knows no extension: it would ask for consent to another
    // file than the one that is taken in the end.
    const bool is_the_desktops = dialog.layout() == nullptr;
    if (!is_the_desktops) dialog.setDefaultSuffix(ToQt(DefaultExt));
    QString chosen;
    do {
        if (RunDialog(dialog) != QDialog::Accepted) throw RunTimeError(kCancel);
        chosen = dialog.selectedFiles().constFirst();
    } while (is_the_desktops && !TakesExtension(&chosen, DefaultExt));
    FileName = FromQt(chosen);
}

Colour ButtonFace() { return FromQt(QApplication::palette().color(QPalette::Button)); }

Colour HighlightText() { return FromQt(QApplication::palette().color(QPalette::HighlightedText)); }

BusyCursor::BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }

BusyCursor::~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }

namespace {

constexpr const char* kPlacedAt = "placedAt";  // property of a window: the middle of where it was put

/// The middle of a window on the screen. While a window manager under load is taking a window over, Qt can believe it
/// to be as small as a point, or its frame in the corner of the screen: then it is where it was put.
QPoint MiddleOf(const QWidget& window) {
    const QRect frame = window.frameGeometry();
    const bool is_known = frame.topLeft() != QPoint(0, 0) && frame.width() > 1 && frame.height() > 1;
    const QVariant placed_at = window.property(kPlacedAt);
    return is_known || !placed_at.isValid() ? frame.center() : placed_at.toPoint();
}

}  // namespace

void PlaceOver(QWidget* window, const QWidget* owner) {
    const QScreen* screen = owner ? owner->screen() : QGuiApplication::primaryScreen();
    const QRect room = screen->availableGeometry();
    const QPoint centre = owner ? MiddleOf(*owner) : room.center();
    QRect place = window->frameGeometry();
    place.moveCenter(centre);
    const int left = std::max(room.left(), std::min(place.left(), room.right() + 1 - place.width()));
    // The frame is not known before the window is shown; a title bar above the screen could not be taken hold of.
    const int title = QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int top = std::max(room.top() + title, std::min(place.top(), room.bottom() + 1 - place.height()));
    window->move(left, top);
    window->setProperty(kPlacedAt, QPoint(left + place.width() / 2, top + place.height() / 2));
}

}  // namespace vantrel
