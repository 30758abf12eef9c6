/* Lets libFuzzer run the one target that is linked into the program. */
#include <cstddef>
#include <cstdint>

#include "FuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::unique_ptr<FuzzTarget> target = FuzzTargets().front().make();
    target->Run({data, size});
    return 0;
}
