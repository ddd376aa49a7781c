// What libraries of others do not free, once in a process. The leak checker asks for it by this name: Cairo
// 1.16 keeps something of each subset of an OpenType font, Fontconfig 2.14 something of its configuration.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:libcairo.so\nleak:libfontconfig.so";
}
