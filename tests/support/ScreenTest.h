/* A test on the simulated handheld of what the user sees: the library's resources and the tests' own are the
 * library module's, and the texts are English unless a test loads others. */
#pragma once

#include "support/NetworkTest.h"

#include "frame/ResourceModule.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"

class ScreenTest : public NetworkTest {
protected:
    void SetUp() override {
        NetworkTest::SetUp();
        device.SetResources(device.LibraryInstance(), ReadResourceFile(ORVANDE_TEST_RESOURCES));
        ownModule = device.LibraryInstance();
        resourceModule = nullptr;
        SetMessageBoxCaption(TEXT("Title"));
    }

    void TearDown() override {
        SetMessageBoxCaption({});
        translationCatalogue.SetLanguage(TEXT("English"), {});
        translationCatalogue.WriteUntranslatedFile({}, {});
        ownModule = nullptr;
        resourceModule = nullptr;
        NetworkTest::TearDown();
    }

    /* Makes these records, lines of English and translation with a TAB between them, the language in use. */
    void Translate(std::string_view records) {
        const WideString path = PathOf(TEXT("Language.txt"));
        PutFile(path, records);
        ASSERT_TRUE(translationCatalogue.LoadTranslationFile(path));
    }

    /* The user presses OK in the next message box. */
    void ExpectMessage() {
        device.AnswerMessageBox(IDOK);
        ++expectedMessages;
    }

    /* The same for a message that may come; one that is expected already is not expected twice. */
    void ExpectMessageOnce() {
        if (expectedMessages == device.MessageBoxes().size()) ExpectMessage();
    }

    /* Shows messages until none is expected any more. */
    void UseUpMessages() {
        while (expectedMessages > device.MessageBoxes().size())
            MessageBoxW(nullptr, TEXT(""), TEXT(""), MB_OK);
    }

private:
    size_t expectedMessages = 0;
};

/* The user cancels the dialog with its menu bar. */
inline void Cancel(DialogUser& user) {
    user.PressButton(IDCANCEL);
}

inline void PrintTo(const std::u16string& text, std::ostream* out) {
    for (const char16_t unit : text)
        *out << (unit < 0x80 ? static_cast<char>(unit) : '?');
}
