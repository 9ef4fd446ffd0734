#include "platform/toolkit/events.h"
#include "windows/Form1.h"

int main() {
    return vantrel::RunProgram([] { vantrel::The<vantrel::Form1>().Show(); });
}
