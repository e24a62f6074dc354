// A module that was built for another version.

extern "C" __attribute__((visibility("default"))) unsigned int orvModuleVersion() {
    return 3u << 16 | 10u << 8 | 7u;
}
