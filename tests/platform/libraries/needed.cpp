// A library that another one needs.
extern "C" __declspec(dllexport) int Needed() { return 7; }
