#include "Common/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

namespace OvPipeline {

void FillStandardStreams() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = open("/dev/null", O_RDONLY);
    if (descriptor > STDERR_FILENO) close(descriptor);
}

} // namespace OvPipeline
