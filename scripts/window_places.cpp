// Prints what the windows of the program consist of, as it is built: names, captions, controls with their places, the
// entries of menus and lists. For whoever works the program from outside, by the names of its controls.
//   window-places [INSTRUMENTS]      the windows as they are with so many instruments of 20 channels connected; 1
//
// One line for each thing, its fields separated by tabs. Places are left, top, width and height in pixels, counted from
// the top left corner of the window's client area.
//   window   WINDOW WIDTH HEIGHT CAPTION
//   control  WINDOW NAME PARENT PLACE      PARENT: the window, a frame, or a page of a tab strip, "SSTab1[0]"
//   cell     WINDOW GRID ROW COLUMN PLACE
//   tab      WINDOW STRIP PAGE PLACE
//   item     WINDOW COMBO NUMBER TEXT
//   menu     WINDOW NAME NUMBER            NUMBER: from 0, in the menu bar
//   entry    WINDOW NAME MENU NUMBER OF    NUMBER: from 0, among OF entries of the menu that are no separators
#include "platform/clock.h"
#include "platform/qt/flex_grid.h"
#include "platform/qt/text.h"
#include "platform/visa.h"
#include "windows/Connect.h"
#include "windows/DATA_Table.h"
#include "windows/DB_SET.h"
#include "windows/DCI_ACI_SET.h"
#include "windows/Form1.h"
#include "windows/Form2.h"
#include "windows/Form3.h"
#include "windows/Form4.h"
#include "windows/Record_View_Draw.h"
#include "windows/Record_View_Form.h"
#include "windows/Set_Dev.h"
#include "windows/about_form.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace vantrel {
namespace {

// -------------------------------------------------------------------------------------------------------- instruments

int instruments = 1;

/// Instruments that give one reply to everything: a card of 20 channels, and an identity.
VisaEntryPoints Instruments() {
    using Word = VisaEntryPoints::Word;
    static constexpr const char* kReply = "2,,\n";
    VisaEntryPoints visa;
    visa.viOpenDefaultRM = [](Word* session) {
        *session = 1;
        return Word{0};
    };
    visa.viFindRsrc = [](Word, const char*, Word* list, Word* count, char* descriptor) {
        *list = 2;
        *count = static_cast<Word>(instruments);
        std::strcpy(descriptor, "GPIB0::1::INSTR");
        return Word{0};
    };
    visa.viFindNext = [](Word, char* descriptor) {
        std::strcpy(descriptor, "GPIB0::1::INSTR");
        return Word{0};
    };
    visa.viOpen = [](Word, const char*, Word, Word, Word* session) {
        *session = 3;
        return Word{0};
    };
    visa.viSetAttribute = [](Word, Word, Word) { return Word{0}; };
    visa.viWrite = [](Word, const unsigned char*, Word count, Word* written) {
        *written = count;
        return Word{0};
    };
    visa.viRead = [](Word, unsigned char* bytes, Word, Word* read) {
        *read = std::strlen(kReply);
        std::memcpy(bytes, kReply, *read);
        return Word{0};
    };
    visa.viClose = [](Word) { return Word{0}; };
    return visa;
}

/// Nobody waits for these instruments.
class NoWait : public Clock {
public:
    DateTime Now() override { return {1'000'000'000'000}; }
    void Sleep(int) override {}
};

// --------------------------------------------------------------------------------------------------------------- lines

/// One line: the fields, separated by tabs.
template <class... Fields>
void Line(const QString& first, const Fields&... fields) {
    QStringList line{first};
    const auto add = [&line](const auto& field) {
        if constexpr (std::is_convertible_v<decltype(field), QString>)
            line << QString(field).replace('\t', ' ').replace('\n', ' ');
        else if constexpr (std::is_same_v<std::decay_t<decltype(field)>, QRect>)
            for (const int edge : {field.left(), field.top(), field.width(), field.height()})
                line << QString::number(edge);
        else
            line << QString::number(field);
    };
    (add(fields), ...);
    std::printf("%s\n", qUtf8Printable(line.join('\t')));
}

/// The window that is being printed.
struct Printer {
    QString window;
    const QWidget* client;

    QRect PlaceOf(const QWidget& widget, const QRect& part) const {
        return {widget.mapTo(client, part.topLeft()), part.size()};
    }
    QRect PlaceOf(const QWidget& widget) const { return PlaceOf(widget, widget.rect()); }

    void PrintControls(const QWidget& parent, const QString& parent_name) const {
        for (const QObject* child : parent.children()) {
            const auto* control = qobject_cast<const QWidget*>(child);
            if (!control || control->objectName().isEmpty()) continue;
            Line("control", window, control->objectName(), parent_name, PlaceOf(*control));
            if (qobject_cast<const QGroupBox*>(control)) PrintControls(*control, control->objectName());
            if (const auto* tabs = qobject_cast<const QTabWidget*>(control)) PrintTabs(*tabs);
            if (const auto* grid = qobject_cast<const GridView*>(control)) PrintCells(*grid);
            if (const auto* combo = qobject_cast<const QComboBox*>(control))
                for (int i = 0; i < combo->count(); ++i)
                    Line("item", window, combo->objectName(), i, combo->itemText(i));
        }
    }

    void PrintTabs(const QTabWidget& tabs) const {
        for (int page = 0; page < tabs.count(); ++page) {
            PrintControls(*tabs.widget(page), tabs.objectName() + "[" + QString::number(page) + "]");
            if (tabs.isTabVisible(page))
                Line("tab", window, tabs.objectName(), page, PlaceOf(*tabs.tabBar(), tabs.tabBar()->tabRect(page)));
        }
    }

    void PrintCells(const GridView& grid) const {
        for (int row = 0; row < grid.model()->rowCount(); ++row)
            for (int col = 0; col < grid.model()->columnCount(); ++col) {
                const QRect cell(grid.columnViewportPosition(col), grid.rowViewportPosition(row), grid.columnWidth(col),
                                 grid.rowHeight(row));
                Line("cell", window, grid.objectName(), row, col, PlaceOf(*grid.viewport(), cell));
            }
    }

    void PrintMenus(const QMenuBar& bar) const {
        for (int number = 0; number < bar.actions().size(); ++number) {
            const QAction& menu = *bar.actions()[number];
            Line("menu", window, menu.objectName(), number);
            if (!menu.menu()) continue;
            QList<QAction*> entries = menu.menu()->actions();
            const auto all = entries;
            entries.removeIf([](const QAction* entry) { return entry->isSeparator(); });
            for (const QAction* entry : all)
                Line("entry", window, entry->objectName(), menu.objectName(), entries.indexOf(entry), entries.size());
        }
    }
};

template <class W>
void Print() {
    const W& window = The<W>();
    QWidget& frame = *window.ClientArea()->parentWidget();
    // Places on a tab strip are known once it is laid out.
    frame.setAttribute(Qt::WA_DontShowOnScreen);
    frame.show();
    DoEvents();
    const Printer printer{frame.objectName(), window.ClientArea()};
    Line("window", printer.window, window.ClientArea()->width(), window.ClientArea()->height(), frame.windowTitle());
    if (const auto* bar = frame.findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly)) printer.PrintMenus(*bar);
    printer.PrintControls(*window.ClientArea(), printer.window);
}

/// Connects all instruments, as the dialogs show them from then on.
void ConnectAll() {
    auto& dialog = The<vantrel::Connect>();
    for (int row = 0; row < instruments; ++row) dialog.Check1(row).SetValue(1);
    Print<vantrel::Connect>();
    dialog.Command2_Click();
    Unload<Set_Dev>();
    Unload<Form3>();
    Form1& main = The<Form1>();
    for (int page = 0; page < 4; ++page) main.SSTab1.SetTabVisible(page, page < instruments);
}

void PrintAll() {
    The<Form1>();
    ConnectAll();
    Print<Form1>();
    Print<DB_SET>();
    Print<Set_Dev>();
    Print<DCI_ACI_SET>();
    Print<Form4>();
    Print<Form3>();
    Print<Form2>();
    Print<DATA_Table>();
    Print<Record_View_Form>();
    Print<Record_View_Draw>();
    Print<about_form>();
}

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    using namespace vantrel;
    if (argc > 1) instruments = std::clamp(std::atoi(argv[1]), 1, 4);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});  // of what that platform lacks
    NoWait clock;
    UseClock(&clock);
    UseVisa(Instruments());
    return RunProgram([] {
        PrintAll();
        std::fflush(stdout);
        End();
    });
}
