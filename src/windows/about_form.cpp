#include "windows/about_form.h"

#include "platform/toolkit/desktop.h"

namespace vantrel {

about_form::about_form() : Window("about_form", "About Orlane VANTREL", {5775, 2415}) {
    Label2.SetCaption("version " VANTREL_VERSION);
    Command1.SetFocus();  // it opens with the focus on its button, not on the link
    Label4.OnClick = [this] { Label4_Click(); };
    Command1.OnClick = [this] { Command1_Click(); };
}

void about_form::Label4_Click() { OpenWebAddress(Label4.Caption()); }

void about_form::Command1_Click() { Unload<about_form>(); }

}  // namespace vantrel
