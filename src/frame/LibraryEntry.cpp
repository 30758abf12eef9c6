#include "frame/LibraryEntry.h"

#include "base/Contained.h"
#include "base/Trace.h"
#include "frame/ResourceModule.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"

bool AttachLibrary(HINSTANCE instance, DWORD reason, LPVOID reserved) noexcept {
    if constexpr (isTraced) BeginTrace(instance);
    SHInitExtraControls(instance, reason, reserved);
    // No language is loaded yet: the caption stays English, and the title is collected as untranslated.
    RunContained([] { SetMessageBoxCaption(translationCatalogue.Translate(TEXT("Orvande Online"))); });
    ownModule = instance;
    RunContained([&] { translationCatalogue.InitTranslation(instance); });
    return true;
}
