/* The library that is linked in, made as new as one that has just been loaded. */
#include <memory>

#include "Flow.h"
#include "frame/LibraryEntry.h"
#include "frame/ResourceModule.h"
#include "transport/NetworkConnection.h"
#include "transport/WebConnection.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"

namespace {

// With the tests' own dialogs.
const bool hasResources = [] {
    Device& device = Device::Current();
    device.SetDefaultResources(device.LibraryInstance(), ReadResourceFile(ORVANDE_TEST_RESOURCES));
    return true;
}();

/* All that it keeps for the process, but for the session, which outlives tests. */
void Forget() {
    std::destroy_at(&translationCatalogue);
    std::construct_at(&translationCatalogue);
    messageBoxCaption = {};
    messageBoxCaption.shrink_to_fit();
    ownModule = nullptr;
    resourceModule = nullptr;
    managedConnection = nullptr;
    roamingWarningAccepted = false;
}

}  // namespace

void BeginLibrary(Library library) {
    Device& device = Device::Current();
    device.SetLibraryPath(library == Library::Account ? u"\\Program Files\\App\\OrvandeAccount.dll"
                                                      : u"\\Program Files\\App\\OrvandeOnline.dll");
    if (library != Library::None) AttachLibrary(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr);
}

void EndLibrary(Library /*library*/) {
    Forget();
}
