// A shared library that the module tests load.
extern "C" __attribute__((visibility("default"))) int FixtopSampleModuleExport() {
    return 17;
}
