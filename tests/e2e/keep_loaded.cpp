// Part of the game under a leak sanitizer only: keeps the OpenGL driver loaded to the end, so that what it
// leaks has a name in lsan.supp.

extern "C" int dlclose(void* /*handle*/) noexcept {
    return 0;
}
