/* The library under the tests that call its exports: the image, loaded anew for each of them. */
#include "LMOnline.h"
#include "support/NetworkTest.h"

// What the tests call: a jump to the image's function, which finds the arguments where the caller has put
// them.
#define EXPORT(name)                                                                     \
    void (*imageHas_##name)();                                                           \
    asm(".pushsection .text; .arm; .global " #name "; .type " #name ", %function;" #name \
        ": ldr ip, =imageHas_" #name "; ldr pc, [ip]; .ltorg; .popsection");
#include "Exports.inc"
#undef EXPORT

namespace {

struct Export {
    const char* name;
    void (**function)();
};

#define EXPORT(name) {#name, &imageHas_##name},
constexpr Export exports[] = {
#include "Exports.inc"
};
#undef EXPORT

LoadedLibrary& Library() {
    static auto& library = *new LoadedLibrary;
    return library;
}

void ReportFailure(const std::string& what) {
    ADD_FAILURE() << what;
}

}  // namespace

void NetworkTest::SetUp() {
    Device::Current().SetViolationHook(ReportFailure);
    Library() = Device::Current().LoadLibraryFile(ORVANDE_LIBRARY_FILE);
    for (const Export& each : exports) {
        *each.function = Library().Find<void()>(each.name);
        ASSERT_NE(nullptr, *each.function) << each.name << " is not exported";
    }
    DeviceTest::SetUp();
}

void NetworkTest::TearDown() {
    DeviceTest::TearDown();
    Device::Current().SetViolationHook(ReportFailure);
    Library().Unload();
    Device::Current().SetViolationHook(nullptr);
}
