#include "ui/MessageBoxes.h"

#include <gtest/gtest.h>

#include "Device.h"
#include "support/DeviceTest.h"
#include "ui/TranslationCatalogue.h"

namespace {

class MessageBoxes : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        SetMessageBoxCaption({});
    }
    void TearDown() override {
        SetMessageBoxCaption({});
        translationCatalogue.WriteUntranslatedFile({}, {});  // forgets what the test translated
        DeviceTest::TearDown();
    }

    void Load(std::string_view records) {
        device.PutFile(u"\\Temp\\language.txt", records);
        translationCatalogue.LoadTranslationFile(TEXT("\\Temp\\language.txt"));
    }

    const ShownMessageBox& Shown() const { return device.MessageBoxes().back(); }

    static int ShowV(HWND owner, UINT flags, const WideString* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        const int answer = ShowTranslatedMessageFormatV(owner, flags, *format, arguments);
        va_end(arguments);
        return answer;
    }

    Device& device = Device::Current();
    const HWND owner = reinterpret_cast<HWND>(uintptr_t{0x1230});
};

}  // namespace

TEST_F(MessageBoxes, TextIsShownInEnglishWithoutALanguage) {
    device.AnswerMessageBox(IDOK);
    EXPECT_EQ(IDOK, ShowTranslatedMessage(owner, MB_ICONINFORMATION, TEXT("No such user.")));
    EXPECT_EQ(u"No such user.", Shown().text);
    EXPECT_EQ(owner, Shown().owner);
    EXPECT_EQ(UINT{MB_ICONINFORMATION}, Shown().flags);
    EXPECT_EQ(1u, translationCatalogue.UntranslatedTexts().count(TEXT("No such user.")));
}

TEST_F(MessageBoxes, TextIsShownInTheUsersLanguage) {
    Load("No such user.\tInconnu.\n");
    device.AnswerMessageBox(IDOK);
    ShowTranslatedMessage(nullptr, MB_OK, TEXT("No such user."));
    EXPECT_EQ(u"Inconnu.", Shown().text);
    EXPECT_EQ(nullptr, Shown().owner);
}

TEST_F(MessageBoxes, AnswerIsPassedOn) {
    for (const int answer : {IDYES, IDNO, IDCANCEL}) {
        device.AnswerMessageBox(answer);
        EXPECT_EQ(answer, ShowTranslatedMessage(nullptr, MB_YESNOCANCEL, TEXT("Really?")));
    }
}

TEST_F(MessageBoxes, PlainTextIsNotTranslated) {
    Load("Open\tOuvrir\n");
    device.AnswerMessageBox(IDOK);
    EXPECT_EQ(IDOK, ShowPlainMessage(owner, MB_ICONHAND, TEXT("Open")));
    EXPECT_EQ(u"Open", Shown().text);
    EXPECT_EQ(UINT{MB_ICONHAND}, Shown().flags);
    EXPECT_TRUE(translationCatalogue.UntranslatedTexts().empty());
}

TEST_F(MessageBoxes, FormatIsTranslatedBeforeItIsFilledIn) {
    Load("Error %d in %s\tErreur %d dans %s\n");
    device.AnswerMessageBox(IDOK);
    EXPECT_EQ(IDOK,
              ShowTranslatedMessageFormat(owner, MB_ICONHAND, TEXT("Error %d in %s"), 3, TEXT("a.map")));
    EXPECT_EQ(u"Erreur 3 dans a.map", Shown().text);
    EXPECT_EQ(owner, Shown().owner);
    EXPECT_EQ(UINT{MB_ICONHAND}, Shown().flags);
}

TEST_F(MessageBoxes, TranslationThatReadsFewerArgumentsIsShown) {
    Load("Error %d in %s\tErreur %x !\n");
    device.AnswerMessageBox(IDOK);
    ShowTranslatedMessageFormat(owner, MB_OK, TEXT("Error %d in %s"), 31, TEXT("a.map"));
    EXPECT_EQ(u"Erreur 1f !", Shown().text);
}

TEST_F(MessageBoxes, EnglishTextIsShownForATranslationThatReadsOtherArguments) {
    for (const std::string_view hostile :
         {"%s", "%S", "%hs", "%ls", "%ws", "%n", "%hn", "%*.*d", "%.1000000d", "%2147483647d", "%d %d %d %d",
          "Erreur %d dans %s"}) {
        Load("Error %d\t" + std::string(hostile) + "\n");
        device.AnswerMessageBox(IDOK);
        EXPECT_EQ(IDOK, ShowTranslatedMessageFormat(owner, MB_OK, TEXT("Error %d"), 0x41414141));
        EXPECT_EQ(u"Error 1094795585", Shown().text) << hostile;
    }
}

TEST_F(MessageBoxes, TranslationThatIsFoundWithoutOrnamentsIsHeldAgainstTheTextWithThem) {
    for (const auto& [translation, shown] :
         {std::pair("%s", u"Error: 007."), {"Erreur %5x", u"Erreur     7"}, {"%d %d", u"Error: 007."}}) {
        Load("Error %3d\t" + std::string(translation) + "\n");
        device.AnswerMessageBox(IDOK);
        ShowTranslatedMessageFormat(owner, MB_OK, TEXT("Error: %.3d."), 7);
        EXPECT_EQ(shown, Shown().text) << translation;
    }
}

TEST_F(MessageBoxes, CatalogueIsAskedForTheFormatNeverForTheMessage) {
    Load("Error 3\tnever this\n");
    device.AnswerMessageBox(IDOK);
    ShowTranslatedMessageFormat(nullptr, MB_OK, TEXT("Error %d"), 3);
    EXPECT_EQ(u"Error 3", Shown().text);
    EXPECT_EQ(std::set<WideString>{TEXT("Error %d")}, translationCatalogue.UntranslatedTexts());
}

TEST_F(MessageBoxes, ArgumentListFormDoesTheSame) {
    Load("Error %d\tErreur %d\n");
    device.AnswerMessageBox(IDYES);
    const WideString format = TEXT("Error %d");
    EXPECT_EQ(IDYES, ShowV(owner, MB_YESNO, &format, 14));
    EXPECT_EQ(u"Erreur 14", Shown().text);
    EXPECT_EQ(owner, Shown().owner);
    EXPECT_EQ(UINT{MB_YESNO}, Shown().flags);
}

TEST_F(MessageBoxes, LongMessageIsCutAt999Units) {
    device.AnswerMessageBox(IDOK);
    const WideString longText(2000, TEXT('x'));
    ShowTranslatedMessageFormat(nullptr, MB_OK, TEXT("%s"), longText.c_str());
    EXPECT_EQ(std::u16string(999, u'x'), Shown().text);
}

TEST_F(MessageBoxes, PlainAndTranslatedMessagesAreNotCut) {
    const WideString longText(2000, TEXT('x'));
    device.AnswerMessageBox(IDOK);
    ShowPlainMessage(nullptr, MB_OK, longText);
    EXPECT_EQ(longText, Shown().text);
    device.AnswerMessageBox(IDOK);
    ShowTranslatedMessage(nullptr, MB_OK, longText);
    EXPECT_EQ(longText, Shown().text);
}

TEST_F(MessageBoxes, CaptionIsEmptyUntilItIsSetAndThenTheSameForEveryBox) {
    device.AnswerMessageBox(IDOK);
    ShowTranslatedMessage(nullptr, MB_OK, TEXT("a"));
    EXPECT_EQ(u"", Shown().caption);

    SetMessageBoxCaption(TEXT("Title"));
    for (const auto show : {&ShowTranslatedMessage, &ShowPlainMessage}) {
        device.AnswerMessageBox(IDOK);
        show(nullptr, MB_OK, TEXT("a"));
        EXPECT_EQ(u"Title", Shown().caption);
    }
    device.AnswerMessageBox(IDOK);
    ShowTranslatedMessageFormat(nullptr, MB_OK, TEXT("a"));
    EXPECT_EQ(u"Title", Shown().caption);

    SetMessageBoxCaption(TEXT("Other"));
    device.AnswerMessageBox(IDOK);
    ShowPlainMessage(nullptr, MB_OK, TEXT("a"));
    EXPECT_EQ(u"Other", Shown().caption);
}

TEST_F(MessageBoxes, CaptionIsACopyAndIsNotTranslatedWhenABoxIsShown) {
    WideString caption = TEXT("Open");
    SetMessageBoxCaption(caption);
    caption = TEXT("changed");
    Load("Open\tOuvrir\n");
    device.AnswerMessageBox(IDOK);
    ShowTranslatedMessage(nullptr, MB_OK, TEXT("a"));
    EXPECT_EQ(u"Open", Shown().caption);
}
