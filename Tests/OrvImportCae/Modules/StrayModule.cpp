// A shared object that is no module, and only has a module's name.

extern "C" __attribute__((visibility("default"))) int stray() {
    return 0;
}
