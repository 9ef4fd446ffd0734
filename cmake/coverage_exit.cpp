// A process that ends at once, as the program and the children of tests do, writes its coverage figures first. For builds
// with VANTREL_COVERAGE, whose linker sends these two calls here.
extern "C" {

void __gcov_dump();
[[noreturn]] void __real__Exit(int status);
[[noreturn]] void __real__exit(int status);

[[noreturn]] void __wrap__Exit(int status) {
    __gcov_dump();
    __real__Exit(status);
}

[[noreturn]] void __wrap__exit(int status) {
    __gcov_dump();
    __real__exit(status);
}
}
