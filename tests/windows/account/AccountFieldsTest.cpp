/* What may be typed or pasted into the fields, of any length. */
#include "account/AccountServiceTest.h"
#include "helpers/ScriptedServer.h"
#include "support/MapShopReply.h"

namespace {

using namespace account_texts;

struct Sample {
    const char* name;
    std::wstring text;
};

void PrintTo(const Sample& sample, std::ostream* out) {
    *out << sample.name;
}

const Sample samples[] = {
    {"OneUnit", L"x"},
    {"SixteenUnits", L"abcdefghijklmnop"},
    {"SeventeenUnits", L"abcdefghijklmnopq"},
    {"FiveHundredUnits", std::wstring(499, L'y') + L"z"},
    {"Umlauts", L"\xC4\xD6\xDC\xE4\xF6\xFC\xDF"},
    {"Cjk", L"\x4E2D\x6587\x5E33\x53F7"},
    {"SurrogatePairs", L"\xD83D\xDE00\xD83C\xDF0D"},
    {"HalfSurrogates", L"\xDE00 \xD83D"},
    {"Quotes", L"\"'`\x201E\x201C\xAB\xBB"},
    {"Markup", L"a=b&c%20+d#e;f\\g/h<i>"},
    {"SpacesAtItsEnds", L"  Anna  "},
    {"LineFeeds", L"first\nsecond\r\nthird"},
    {"Tab", L"first\tsecond"},
};

std::string NameOf(const testing::TestParamInfo<Sample>& info) {
    return info.param.name;
}

bool HasLineEnds(const std::wstring& text) {
    return text.find_first_of(L"\r\n\t") != std::wstring::npos;
}

/* As a user enters it: key by key, or by a paste where keys do other things or are too many. */
void Enter(HWND dialog, int control, const std::wstring& text) {
    constexpr size_t most = 50;
    if (HasLineEnds(text)) {
        Put(dialog, control, text);
    } else if (text.size() > most) {
        Put(dialog, control, text.substr(0, text.size() - most));
        TypeOn(dialog, control, text.substr(text.size() - most));
    } else {
        Type(dialog, control, text);
    }
    // What the field takes of it is what it shows.
    EXPECT_EQ(text, TextOf(dialog, control));
}

class AccountFields : public AccountScreenTest, public testing::WithParamInterface<Sample> {
protected:
    ScriptedServer server;
    WebProxy proxy{server.Port()};
};

/* The letters and digits that count in a password, as a saved one gives them back. */
std::wstring Counted(const std::wstring& password) {
    std::wstring counted;
    for (const WCHAR unit : password) {
        if (unit >= L'A' && unit <= L'Z') counted.push_back(static_cast<WCHAR>(unit + 32));
        if ((unit >= L'a' && unit <= L'z') || (unit >= L'0' && unit <= L'9')) counted.push_back(unit);
    }
    return counted.substr(0, 16);
}

/* What a settings file keeps of a text: the low byte of each unit, none where that is 0. */
std::wstring Kept(const std::wstring& text) {
    std::wstring kept;
    for (const WCHAR unit : text) {
        if ((unit & 0xFF) != 0) kept.push_back(static_cast<WCHAR>(unit & 0xFF));
    }
    return kept;
}

class AccountFieldsAtTheService : public AccountServiceTest, public testing::WithParamInterface<Sample> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Text, AccountFields, testing::ValuesIn(samples), NameOf);
INSTANTIATE_TEST_SUITE_P(Text, AccountFieldsAtTheService, testing::ValuesIn(samples), NameOf);

TEST_P(AccountFields, GoToTheServiceAsTheyAreAtSigningIn) {
    const std::wstring& text = GetParam().text;
    server.Answer(MapShopReply().Int32(0).Int32(0).bytes);
    EXPECT_TRUE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        Enter(dialog, USER_ID_FIELD, text);
        Enter(dialog, PASSWORD_FIELD, text);
        Click(dialog, SAVE_PASSWORD_BOX);
        user.WaitUntil("the tick", [&] { return IsTicked(dialog, SAVE_PASSWORD_BOX); });
        PressSignIn(dialog);
    }));
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    EXPECT_EQ(MapShopReply().Int32(8).Text(text).Text(text).Int32(0x01020304).bytes, requests[0].body);
    StartAgain();
    EXPECT_EQ(Kept(text), account.userId);
    EXPECT_EQ(Counted(text), account.password);
}

TEST_P(AccountFields, GoToTheServiceAsTheyAreAtCreating) {
    const std::wstring& text = GetParam().text;
    server.Answer(MapShopReply().Int32(0).bytes);
    EXPECT_TRUE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        for (const int id : {USER_ID_FIELD, PASSWORD_FIELD, RETYPE_FIELD, NAME_FIELD, EMAIL_FIELD})
            Enter(dialog, id, text);
        PressDone(dialog);
    }));
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    MapShopReply expected;
    expected.Int32(10).Text(text).Text(text).Text(text).Text(L"").Text(text);
    expected.bytes += '\1';
    EXPECT_EQ(expected.Int32(0).Text(L"English").bytes, requests[0].body);
}

TEST_P(AccountFieldsAtTheService, AccountOfThatNameSignsInWithItsPasswordAndWithTheSavedOne) {
    const std::wstring userId = NewUserId(L"u") + L" " + GetParam().text;
    const std::wstring password = L"Six-666" + GetParam().text;
    ASSERT_TRUE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        Put(dialog, USER_ID_FIELD, userId);
        Put(dialog, PASSWORD_FIELD, password);
        Put(dialog, RETYPE_FIELD, password);
        Put(dialog, NAME_FIELD, GetParam().text);
        Put(dialog, EMAIL_FIELD, NewUserId(L"u") + L"@example.org");
        PressDone(dialog);
    }));
    for (const std::wstring& tried : {password, Counted(password)}) {
        account.userId = userId;
        account.password = tried;
        EXPECT_TRUE(SignInAs([](const ScreenUser& user) { PressSignIn(user.WaitForDialog(signInCaption)); }));
    }
}
