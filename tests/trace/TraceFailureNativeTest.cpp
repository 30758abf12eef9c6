/* What a trace tells of calls that fail, and of the rarer ends of those that do not. */
#include <algorithm>

#include "account/AccountSettings.h"
#include "trace/TraceFixture.h"
#include "transport/WebConnection.h"

namespace {

struct FailedCall {
    const char* function;
    size_t n;  // which call of the function; each line of the trace opens and writes a file, too
    const char* line;
};

void ExpectLine(const std::string& line) {
    const std::vector<std::string> lines = Lines();
    EXPECT_EQ(1, std::ranges::count(lines, line)) << line << " in " << ::testing::PrintToString(lines);
}

/* Makes each call fail alone, and looks for its line. */
void ExpectTold(std::initializer_list<FailedCall> failures, const std::function<void()>& operation) {
    for (const FailedCall& failed : failures) {
        Begin();
        Device::Current().FailCall(failed.function, failed.n, ERROR_ACCESS_DENIED);
        operation();
        Device::Current().StopFailing();
        ExpectLine(failed.line);
    }
}

}  // namespace

TEST_F(TracedSearch, TellsEachCallThatFailsByItsResultAndCode) {
    Answer(TwoMaps());
    ExpectTold({{"ConnMgrMapURL", 1, "find network\thttp://www.orvande.example/\t5\t0"},
                {"InternetOpenW", 1, "session\t\t0\t5"},
                {"InternetConnectW", 1, "connect\tonline.orvande.example\t80\t5"},
                {"HttpOpenRequestW", 1, "POST\tcgi-bin/mapstore.cgi\t0\t5"},
                {"HttpSendRequestW", 1, "send\t\t8\t5"},
                {"InternetReadFile", 1, "read\t\t0\t5"},
                {"InternetReadFile", 1, "search\t\t0\t5"}},
               Search);
}

TEST_F(TracedSearch, TellsADialThatFailsByItsCode) {
    device.SetConnectionAnswers({.establishResult = E_FAIL});
    Answer(TwoMaps());
    Search();
    ExpectLine("dial\t\t-2147467259\t0");
}

TEST_F(TracedSearch, TellsAnHttpStatusThatCannotBeHad) {
    Answer(MapShopReply().Int32(7));
    ExpectTold({{"HttpQueryInfoW", 1, "HTTP status\t\t1000\t5"}}, Search);
}

TEST_F(TracedSearch, TellsThatThereWasNoMemoryForTheHandle) {
    AllocationWatch watch(1);
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    watch.Stop();
    EXPECT_EQ(nullptr, search);
    ExpectLine("search\t\t-1\t8");
}

TEST_F(TracedTransfer, TellsEachCallOfADownloadThatFailsByItsResultAndCode) {
    Answer("abc");
    ExpectTold({{"InternetConnectW", 1, "connect\tmaps.example\t80\t5"},
                {"HttpOpenRequestW", 1, "GET\t/maps/file.map\t0\t5"},
                {"HttpSendRequestW", 1, "send\t\t0\t5"},
                {"HttpQueryInfoW", 1, "HTTP status\t\t1000\t5"},
                {"CreateFileW", 8, "create\t\\Storage\\file.map.TMP\t0\t5"},
                {"InternetReadFile", 1, "read\t\t0\t5"},
                {"WriteFile", 12, "write\t\t0\t5"},
                {"MoveFileW", 1, "move to\t\\Storage\\file.map\t0\t5"},
                {"HttpSendRequestW", 1, "transfer\tmaps.example\t0\t5"}},
               [this] { Fetch(); });
}

TEST_F(TracedTransfer, TellsEachCallOfARangeThatFailsByItsResultAndCode) {
    Answer("abc");
    ExpectTold({{"HttpOpenRequestW", 1, "GET\t/f\t0\t5"},
                {"HttpSendRequestW", 1, "send\tRange:bytes=5-7<U+000A>\t0\t5"},
                {"HttpSendRequestW", 1, "transfer\tmaps.example\t-1\t5"}},
               [this] {
                   char buffer[3];
                   LMReadWebFileRange(host, TEXT("/f"), 5, 3, buffer, Callback, this);
               });
}

TEST_F(TracedTransfer, TellsTheFileThatWasReplacedAnUnknownLengthAndACallbackThatCancels) {
    device.PutFile(target, "old");
    WebReply reply = WebReply::WithBody("abc");
    reply.sendsContentLength = false;
    Answer(std::move(reply));
    atCallback = [] { return 0; };
    Fetch();
    ExpectLine("delete\t\\Storage\\file.map\t1\t0");
    ExpectLine("length\t\t-1\t0");
    ExpectLine("callback\t\t0\t0");
}

TEST_F(TracedTransfer, TellsTheVerbOfARequestOrWhatTheSystemTakesForIt) {
    Answer("abc");
    WebConnection connection(host, false, false);
    EXPECT_TRUE(connection.OpenAndSend(TEXT("/f"), nullptr, false));
    EXPECT_TRUE(connection.OpenAndSend(TEXT("/f"), TEXT("HEAD"), false));
    ExpectLine("GET\t/f\t1\t0");
    ExpectLine("HEAD\t/f\t1\t0");
}

TEST_F(TracedAccount, TellsWhetherTheSettingsCouldBeOpened) {
    const auto loadAndSave = [this] {
        LoadAccountSettings(account);
        SaveAccountSettings(account);
    };
    loadAndSave();
    Begin();
    loadAndSave();
    ExpectLine("read file\t\\Application Data\\Orvande\\settings.ini\t1\t0");
    ExpectLine("write file\t\\Application Data\\Orvande\\settings.ini\t1\t0");
    ExpectTold({{"_wfopen", 1, "read file\t\\Application Data\\Orvande\\settings.ini\t0\t5"},
                {"_wfopen", 2, "write file\t\\Application Data\\Orvande\\settings.ini\t0\t5"}},
               loadAndSave);
}

TEST_F(TracedAccount, TellsWhetherTheFilesOfTranslationsCouldBeOpened) {
    const WideString path = PathOf(TEXT("Language.txt"));
    PutFile(path, "Open\tOuvrir\n");
    device.MakeFolder(u"\\Storage");
    device.MakeFolder(u"\\Storage\\ZRTranslation");
    const auto readAndWrite = [&] {
        translationCatalogue.LoadTranslationFile(path);
        translationCatalogue.Translate("Close");
        translationCatalogue.WriteUntranslatedFile(TEXT("\\App.dll"), TEXT("\\Storage"));
    };
    readAndWrite();
    const std::string name(path.begin(), path.end());
    ExpectLine("read file\t" + name + "\t1\t0");
    ExpectLine("write file\t\\Storage\\ZRTranslation\\App.txt\t1\t0");
    ExpectTold({{"_wfopen", 1, ("read file\t" + name + "\t0\t5").c_str()},
                {"_wfopen", 2, "write file\t\\Storage\\ZRTranslation\\App.txt\t0\t5"}},
               readAndWrite);
}

TEST_F(TracedAccount, TellsTheFlagsOfAMessageAndABoxThatCannotBeShown) {
    ExpectTold({{"MessageBoxW", 1, "box\t\t0\t5"},
                {"MessageBoxW", 1,
                 "message\tYou must provide a user name and password to access your account.\t64\t0"}},
               [this] { SignIn(account, nullptr); });
}

TEST_F(TracedAccount, TellsAMessageWithItsPlaceholdersAndTheEndOfItsDialog) {
    Answer(MapShopReply().Int32(7));
    device.UseDialog([this](DialogUser& user) {
        ExpectMessage();
        user.PressButton(IDOK);
        user.PressButton(IDCANCEL);
    });
    EXPECT_FALSE(CreateAccount(account, nullptr));
    ExpectLine("message\tThe server returned error code %d\t16\t0");
    ExpectLine("dialog begins\t\t" + std::to_string(CREATE_ACCOUNT_DIALOG) + "\t0");
    ExpectLine("dialog ends\t\t2\t0");
}

TEST_F(TracedAccount, TellsADialogThatCannotBeShown) {
    ExpectMessage();
    ExpectTold({{"FindResourceW", 1, "dialog ends\t\t-1\t5"}}, [this] { CreateAccount(account, nullptr); });
}
