#include <objbase.h>

#include <cstdlib>

// Objects are created in an apartment only: without one, a target would see nothing but refusals.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) std::abort();
    return 0;
}
