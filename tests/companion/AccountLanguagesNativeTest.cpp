/* All that a user sees of an account, in the languages that are shipped. */
#include "companion/CompanionTest.h"

#include <fstream>
#include <iterator>
#include <set>

namespace {

using Texts = std::vector<std::u16string>;
using LanguageFile = std::map<std::u16string, std::u16string>;

constexpr char16_t harvestFile[] = u"\\My Documents\\ZRTranslation\\OrvandeAccount.txt";

/* A field as the manual tells it, without the library's help: in quotes that double those inside, or as it
 * is; then with its line breaks. */
std::u16string ReadField(std::u16string field) {
    if (field.front() == u'"') {
        field = field.substr(1, field.size() - 2);
        for (size_t at = 0; (at = field.find(u"\"\"", at)) != std::u16string::npos; ++at)
            field.erase(at, 1);
    }
    for (size_t at = 0; (at = field.find(u"\\n", at)) != std::u16string::npos; ++at)
        field.replace(at, 2, u"\n");
    return field;
}

/* The records of UTF-16 with a byte order mark and CR LF; all other lines are left out. */
LanguageFile ReadRecords(std::string_view bytes) {
    LanguageFile records;
    std::u16string units(bytes.size() / 2, u'\0');
    memcpy(units.data(), bytes.data(), units.size() * 2);
    EXPECT_EQ(0xFEFF, units.at(0));
    for (size_t begin = 1; begin < units.size();) {
        const size_t end = units.find(u"\r\n", begin);
        const std::u16string line = units.substr(begin, end - begin);
        const size_t tab = line.find(u'\t');
        if (tab != std::u16string::npos) {
            records[ReadField(line.substr(0, tab))] = ReadField(line.substr(tab + 1));
        }
        begin = end == std::u16string::npos ? end : end + 2;
    }
    return records;
}

class AccountLanguages : public CompanionTest, public ::testing::WithParamInterface<const char*> {
protected:
    void See(const std::u16string& text) {
        if (!text.empty()) seen.push_back(text);
    }

    void See(const ShownDialog& dialog) {
        See(dialog.caption);
        for (const ShownControl& control : dialog.controls) {
            if (control.className != u"edit") See(control.text);
        }
        for (const ShownButton& button : dialog.menuBar) {
            See(button.text);
            for (const ShownMenuItem& item : button.menu)
                See(item.text);
        }
    }

    /* Presses the first soft key, and sees the box that comes of it. */
    void SeeMessage(DialogUser& user) {
        const size_t before = device.MessageBoxes().size();
        device.AnswerMessageBox(IDOK);
        user.PressButton(IDOK);
        ASSERT_EQ(before + 1, device.MessageBoxes().size());
        See(device.MessageBoxes().back().text);
    }

    void SeeMessagesOf(DialogUser& user, std::initializer_list<int32_t> statuses) {
        for (const int32_t status : statuses) {
            Answer(MapShopReply().Int32(status));
            SeeMessage(user);
        }
    }

    void SignIn() {
        device.UseDialog([this](DialogUser& user) {
            See(user.Look());
            SeeMessage(user);
            user.Type(USER_ID_FIELD, u"Anna");
            user.Type(PASSWORD_FIELD, u"Secret-1");
            SeeMessagesOf(user, {4, 5, 6});
            user.ChooseMenuItem(IDCANCEL);
        });
        LMAccountRecord record = Record();
        ExpectFailure(cancelled, LMAccountShowSignIn(&record, nullptr));
    }

    void Create() {
        device.UseDialog([this](DialogUser& user) {
            See(user.Look());
            user.Type(PASSWORD_FIELD, u"Secret-1");
            SeeMessage(user);
            user.Type(RETYPE_FIELD, u"Secret-1");
            device.FailCall("HttpSendRequestW", 1, ERROR_INTERNET_TIMEOUT);
            SeeMessage(user);
            Answer(WebReply::WithBody(""));
            SeeMessage(user);
            SeeMessagesOf(user, {2, 3, 14, 77});
            const size_t number = seen.back().find(u"77");
            ASSERT_NE(std::u16string::npos, number);
            seen.back().replace(number, 2, u"%d");
            SeeMessagesOf(user, {13});
        });
        LMAccountRecord record = Record();
        ExpectFailure(cancelled, LMAccountShowCreate(&record, nullptr));
    }

    /* All that is shown from the DLL's load to its unload, and what is harvested then. */
    Texts Session() {
        seen.clear();
        Answer(MapShopReply());
        Restart();
        device.PutFile(harvestFile, "nothing");
        SignIn();
        Create();
        Restart();
        return seen;
    }

    [[nodiscard]] std::string Harvest() const { return device.TakeFile(harvestFile).value_or("no file"); }

    Texts seen;
};

std::set<std::u16string> TextsOf(const LanguageFile& records) {
    std::set<std::u16string> texts;
    for (const auto& [text, translation] : records)
        texts.insert(text);
    return texts;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Shipped, AccountLanguages, ::testing::Values("French", "German"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(AccountLanguages, EveryTextIsTheFilesAndNoneIsHarvested) {
    const std::string name = GetParam();
    std::ifstream file(ORVANDE_LANGUAGES "/" + name + ".txt", std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    const LanguageFile language = ReadRecords(bytes);
    const Texts english = Session();
    std::set<std::u16string> harvested = TextsOf(ReadRecords(Harvest()));
    // What only the other library shows.
    harvested.insert(u"Your phone is roaming, and you may incur data charges.");
    EXPECT_EQ(harvested, TextsOf(language));

    const std::u16string wide(name.begin(), name.end());
    device.PutFile(u"\\Program Files\\App\\OrvandeAccount." + wide + u".txt", bytes);
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ, BytesOf(wide));
    const Texts shown = Session();
    ASSERT_EQ(english.size(), shown.size());
    for (size_t i = 0; i < shown.size(); ++i) {
        const auto record = language.find(english[i]);
        EXPECT_EQ(record == language.end() ? u"no record" : record->second, shown[i])
            << testing::PrintToString(english[i]);
    }
    EXPECT_EQ("nothing", Harvest());
}
