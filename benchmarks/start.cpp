// From the program's start to its window on the screen, against a window with as many bare widgets.
// Each start is a process of its own: this program itself, with an argument.
#include "platform/toolkit/events.h"
#include "ratio.h"
#include "windows/Form1.h"
#include "with_windows.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <array>
#include <cstdlib>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrel {
namespace {

constexpr int kRounds = 25;

void ShowProgram() {
    SetUpHiddenScreen();
    The<Form1>().Show();
    DoEvents();
}

void ShowBareWidgets() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int argc = 1;
    char name[] = "bare";
    std::array<char*, 2> argv{name, nullptr};
    QApplication application(argc, argv.data());
    QWidget window;
    window.resize(1001, 708);
    auto* bar = new QMenuBar(&window);
    for (const int entries : {5, 2, 1}) {
        QMenu* menu = bar->addMenu("Menu");
        for (int i = 0; i < entries; ++i) menu->addAction("Entry");
    }
    bar->addAction("Exit");
    bar->setGeometry(0, 0, 1001, 24);
    for (int i = 0; i < 10; ++i) (new QPushButton("Start", &window))->setGeometry(32 + i * 40, 24, 32, 28);
    for (int i = 0; i < 4; ++i) (new QLabel("160", &window))->setGeometry(32 + i * 60, 568, 40, 17);
    (new QWidget(&window))->setGeometry(32, 56, 930, 504);
    auto* list = new QComboBox(&window);
    list->setEditable(true);
    list->setGeometry(232, 568, 377, 21);
    auto* tabs = new QTabWidget(&window);
    tabs->setGeometry(32, 596, 930, 104);
    for (int i = 0; i < 4; ++i) {
        auto* page = new QWidget;
        tabs->addTab(page, "Device");
        (new QTableView(page))->setGeometry(0, 0, 930, 80);
        (new QTableView(&window))->hide();
    }
    window.show();
    QApplication::processEvents();
    ExitNow(0);
}

/// CPU time in microseconds of this program started with `argument`.
double CostOf(const char* argument) {
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", "benchmark_start", argument, nullptr);
        _exit(127);
    }
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || status != 0) std::abort();
    const auto microseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
    };
    return microseconds(used.ru_utime) + microseconds(used.ru_stime);
}

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    using namespace vantrel;
    const std::string_view task = argc > 1 ? argv[1] : "";
    if (task == "program") ShowProgram();
    if (task == "bare") ShowBareWidgets();
    if (!task.empty()) ExitNow(0);
    Pairs starts;
    for (int i = 0; i < kRounds; ++i) {
        const double program = CostOf("program");
        starts.Add(program, CostOf("bare"));
    }
    Print({12, "start to the shown window", "a window with as many bare widgets", 1.2}, starts);
}
