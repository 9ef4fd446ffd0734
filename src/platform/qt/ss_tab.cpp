#include "platform/errors.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QTabBar>
#include <QTabWidget>

namespace vantrel {

static_assert(SSTab::kStrip == kTabStripPixels * kTwipsPerPixel);

namespace {

QTabWidget* MakeTabs(const std::vector<std::string>& captions) {
    auto* tabs = new QTabWidget;
    tabs->setElideMode(Qt::ElideRight);
    for (const std::string& caption : captions) tabs->addTab(new QWidget, ToCaption(caption));
    return tabs;
}

QTabWidget& TabsOf(QWidget* widget) { return *static_cast<QTabWidget*>(widget); }

/// The tab strip, once it is sure that it has page `page`.
QTabWidget& WithPage(QWidget* widget, int page) {
    QTabWidget& tabs = TabsOf(widget);
    if (page < 0 || page >= tabs.count()) throw RunTimeError(kInvalidPropertyValue);
    return tabs;
}

}  // namespace

Place::Place(SSTab& on, int page) : window(on.window_), parent(TabsOf(on.Widget()).widget(page)), top(SSTab::kStrip) {}

SSTab::SSTab(const Place& place, const std::string& name, const Box& box, const std::vector<std::string>& captions)
    : Control(place, name, box, MakeTabs(captions)) {
    widget_->setAccessibleName(ToQt(name));
}

int SSTab::Tab() const { return TabsOf(widget_).currentIndex(); }

void SSTab::SetTab(int page) { WithPage(widget_, page).setCurrentIndex(page); }

bool SSTab::TabVisible(int page) const { return WithPage(widget_, page).isTabVisible(page); }

void SSTab::SetTabVisible(int page, bool visible) { WithPage(widget_, page).setTabVisible(page, visible); }

std::string SSTab::TabCaption(int page) const { return FromCaption(WithPage(widget_, page).tabText(page)); }

void SSTab::SetTabCaption(int page, const std::string& caption) {
    WithPage(widget_, page).setTabText(page, ToCaption(caption));
    TabsOf(widget_).setTabToolTip(page, ToToolTip(caption));
}

}  // namespace vantrel
