// Stands in where the system has no renderer of XPS pages: the filter is built all the same, and refuses
// jobs.
#include "PageRenderer.h"

#include <LowLevelFacilities/Failures/ThrowFailure.h>

std::unique_ptr<PageRenderer> MakePageRenderer() {
    ThrowFailure<CPException>([] {
        return "this filter was built on a system without a renderer of XPS pages: install "
               "libgxps and cairo (libgxps-dev), and build it again";
    });
}
