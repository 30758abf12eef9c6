#include "companion/CompanionTest.h"

#include <memory>

#include "frame/LibraryEntry.h"
#include "frame/ResourceModule.h"
#include "transport/NetworkConnection.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"

void CompanionTest::SetUp() {
    DeviceTest::SetUp();
    device.SetResources(device.LibraryInstance(), ReadResourceFile(ORVANDE_TEST_RESOURCES));
    device.SetLibraryPath(u"\\Program Files\\App\\OrvandeAccount.dll");
    managedConnection = nullptr;
    Restart();
    SetLastError(staleError);
}

void CompanionTest::TearDown() {
    SetMessageBoxCaption({});
    translationCatalogue.SetLanguage(TEXT("English"), {});
    translationCatalogue.WriteUntranslatedFile({}, {});
    ownModule = nullptr;
    managedConnection = nullptr;
    DeviceTest::TearDown();
}

void CompanionTest::Restart() {
    // What the unloading of a file does with it, and its loading.
    std::destroy_at(&translationCatalogue);
    std::construct_at(&translationCatalogue);
    AttachLibrary(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr);
}
