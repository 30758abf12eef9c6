/* What a library that is built with a trace writes down, and what it never does. */
#include "trace/TraceFixture.h"

namespace {

/* How many files are opened to tell something before the library is loaded. */
const size_t openedTooEarly =
    (Trace(TEXT("too early"), nullptr, 1, 0), Device::Current().CountCalls("CreateFileW"));

}  // namespace

TEST_F(TracedAccount, WhatIsToldBeforeTheLibraryIsLoadedIsNowhere) {
    EXPECT_EQ(0u, openedTooEarly);
    Begin();
    Trace(TEXT("now"), nullptr, 1, 0);
    EXPECT_EQ((std::vector<std::string>{"now\t\t1\t0"}), Lines());
}

TEST_F(TracedAccount, LibraryWhosePathIsNotKnownGoesOnInTheEarlierTrace) {
    device.FailCall("GetModuleFileNameW", 1, ERROR_MOD_NOT_FOUND);
    BeginTrace(device.LibraryInstance());
    device.SetLibraryPath(u"\\.App.dll\\" + std::u16string(MAX_PATH, u'x'));
    BeginTrace(device.LibraryInstance());
    const std::vector<std::string> lines = Lines();
    EXPECT_EQ("load\t\t1\t0", lines.at(0));
    EXPECT_EQ("load\t\\.App.dll\\" + std::string(MAX_PATH - 10, 'x') + "\t1\t0", lines.at(1));
    device.SetLibraryPath(u"\\OrvandeOnline");
    BeginTrace(device.LibraryInstance());
    EXPECT_EQ("load\t\\OrvandeOnline\t1\t0", Lines().at(2)) << "it has no extension";
}

TEST_F(TracedAccount, LibraryOfWhoseNameNothingStandsBeforeItsExtensionHasATraceAllTheSame) {
    device.SetLibraryPath(u"\\.dll");
    BeginTrace(device.LibraryInstance());
    EXPECT_TRUE(device.Exists(u"\\.trace.txt"));
}

TEST_F(TracedAccount, BeginningLeavesTheLastErrorAsItIs) {
    device.FailCall("GetModuleFileNameW", 1, ERROR_MOD_NOT_FOUND);
    SetLastError(77);
    BeginTrace(device.LibraryInstance());
    EXPECT_EQ(77u, GetLastError());
}

TEST_F(TracedAccount, LoadingTheLibraryBeginsTheTraceBehindAnEarlierOne) {
    const std::string load = "load\t\\Program Files\\App\\OrvandeOnline.dll\t1\t0";
    EXPECT_TRUE(AttachLibrary(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr));
    EXPECT_EQ(load, Lines().at(0));
    const size_t lines = Lines().size();
    EXPECT_TRUE(AttachLibrary(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr));
    EXPECT_EQ(load, Lines().at(lines));
}

TEST_F(TracedSearch, TellsEveryStepOfASearch) {
    Answer(TwoMaps());
    const size_t size = TwoMaps().bytes.size();
    Search();
    EXPECT_EQ((std::vector<std::string>{
                  "find network\thttp://www.orvande.example/\t0\t0",
                  "dial\t\t16\t0",
                  "session\t\t1\t0",
                  "connect\tonline.orvande.example\t80\t0",
                  "POST\tcgi-bin/mapstore.cgi\t1\t0",
                  "send\t\t8\t0",
                  "read\t\t" + std::to_string(size) + "\t0",
                  "search\t\t2\t0",
                  "close\t\t24\t0",
              }),
              Lines());
}

TEST_F(TracedSearch, BeginsEachLineWithItsMilliseconds) {
    Answer(TwoMaps());
    Search();
    std::istringstream stream(TraceText());
    int before = 0;
    for (std::string line; std::getline(stream, line);) {
        size_t digits = 0;
        const int time = std::stoi(line, &digits);
        EXPECT_EQ('\t', line[digits]);
        EXPECT_LE(before, time);
        EXPECT_GT(60'000, time) << "counted from the load";
        before = time;
    }
}

TEST_F(TracedSearch, TellsFailedCallsAndCausesByTheirCodes) {
    Answer(WebReply::Refused());
    Search();
    std::vector<std::string> lines = Lines();
    EXPECT_EQ("send\t\t8\t12029", lines.at(5));
    EXPECT_EQ("search\t\t0\t12029", lines.at(6));
    WebReply reply = WebReply::WithBody("<html>");
    reply.status = 404;
    Answer(reply);
    Search();
    lines = Lines();
    EXPECT_EQ("HTTP status\t\t404\t0", lines.at(lines.size() - 3));
    EXPECT_EQ("search\t\t0\t0x21000194", lines.at(lines.size() - 2));
}

TEST_F(TracedSearch, LeavesTheCauseAsItIs) {
    Answer(WebReply::Refused());
    device.FailCall("CreateFileW", 1, ERROR_ACCESS_DENIED, Failing::FromThereOn);
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    EXPECT_EQ(12029u, GetLastError());
    LMMapShopClose(search);
    EXPECT_EQ("no file", TraceText()) << "a trace that cannot be written is none";
}

TEST_F(TracedTransfer, TellsFilesRepliesAndCallbacksOfADownload) {
    Answer("abc");
    Fetch();
    EXPECT_EQ((std::vector<std::string>{
                  "find network\thttp://www.orvande.example/\t0\t0",
                  "dial\t\t16\t0",
                  "connect\tmaps.example\t80\t0",
                  "GET\t/maps/file.map\t1\t0",
                  "send\t\t0\t0",
                  "HTTP status\t\t200\t0",
                  "delete\t\\Storage\\file.map\t0\t2",
                  "create\t\\Storage\\file.map.TMP\t1\t0",
                  "length\t\t3\t0",
                  "read\t\t3\t0",
                  "callback\t\t1\t0",
                  "write\t\t3\t0",
                  "read\t\t0\t0",
                  "callback\t\t1\t0",
                  "move to\t\\Storage\\file.map\t1\t0",
                  "transfer\tmaps.example\t1\t0",
              }),
              Lines());
}

TEST_F(TracedTransfer, TellsTheHeaderOfARange) {
    Answer("abc");
    char buffer[3];
    LMReadWebFileRange(host, TEXT("/f"), 5, 3, buffer, Callback, this);
    const std::vector<std::string> lines = Lines();
    EXPECT_EQ("GET\t/f\t1\t0", lines.at(3));
    EXPECT_EQ("send\tRange:bytes=5-7<U+000A>\t0\t0", lines.at(4));
    EXPECT_EQ("read\t\t3\t0", lines.at(6));
    EXPECT_EQ("callback\t\t1\t0", lines.at(7));
    EXPECT_EQ("transfer\tmaps.example\t3\t0", lines.at(8));
}

TEST_F(TracedTransfer, LeavesOutTheQueryOfAnAddress) {
    Answer("abc");
    x77fc64c7(host, TEXT("/maps/file.map?key=secret"), target, nullptr, nullptr);
    EXPECT_EQ("GET\t/maps/file.map\t1\t0", Lines().at(3));
    EXPECT_EQ(std::string::npos, TraceText().find("secret"));
}

TEST_F(TracedTransfer, TellsAllButPlainCharactersByTheirNumbers) {
    Answer("abc");
    x77fc64c7(host, TEXT("/ \x1F~\x7F\xE9"), target, nullptr, nullptr);
    EXPECT_EQ("GET\t/ <U+001F>~<U+007F><U+00E9>\t1\t0", Lines().at(3));
}

TEST_F(TracedTransfer, TellsTheLongestNumbersBehindTheLongestObject) {
    Trace(TEXT("all"), WideString(200, TEXT('\xE9')).c_str(), INT64_MIN, 0xFFFFFFFF);
    const std::string line = Lines().back();
    EXPECT_LT(900u, line.size());
    EXPECT_EQ(">\t-9223372036854775808\t0xFFFFFFFF", line.substr(line.size() - 33));
}

TEST_F(TracedTransfer, CutsAnObjectThatIsTooLong) {
    Answer("abc");
    x77fc64c7(host, (TEXT("/") + WideString(5000, TEXT('x'))).c_str(), target, nullptr, nullptr);
    const std::string line = Lines().at(3);
    EXPECT_GT(1000u, line.size());
    EXPECT_EQ("xx\t1\t0", line.substr(line.size() - 6));
    Begin();
    Trace(TEXT("all"), WideString(5000, TEXT('x')).c_str(), -5, 0);
    EXPECT_EQ(900 + std::string("\t-5\t0\r\n").size(), TraceText().size());
}

TEST_F(TracedAccount, TellsASignInWithoutItsUser) {
    account.userId = TEXT("Anna");
    account.password = TEXT("Secret-1");
    Answer(MapShopReply().Int32(5));
    ExpectMessage();
    EXPECT_FALSE(SignIn(account, nullptr));
    const std::vector<std::string> lines = Lines();
    EXPECT_EQ("POST\tcgi-bin/licapp.cgi\t1\t0", lines.at(4));
    EXPECT_EQ("send\t\t40\t0", lines.at(5)) << "the length of what is a secret";
    EXPECT_EQ("read\t\t4\t0", lines.at(6));
    EXPECT_EQ("sign in\t\t5\t0x22000005", lines.at(8));
    EXPECT_EQ(0u, lines.at(9).find("message\tThe Password is not correct. If you have lost"));
    EXPECT_EQ("box\t\t1\t0", lines.at(10));
    ExpectNoSecrets();
}

TEST_F(TracedAccount, TellsADialogAndTheSettingsWithoutTheirContents) {
    Accept();
    device.UseDialog([](DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Anna");
        user.Type(PASSWORD_FIELD, u"Secret-1");
        user.Check(SAVE_PASSWORD_BOX);
        user.PressButton(IDOK);
    });
    EXPECT_TRUE(RunSignInDialog(account, nullptr));
    const std::string trace = TraceText();
    EXPECT_NE(std::string::npos, trace.find("\tdialog begins\t\t")) << trace;
    EXPECT_NE(std::string::npos, trace.find("\tdialog ends\t\t1\t0")) << trace;
    EXPECT_NE(std::string::npos, trace.find("\twrite file\t\\Application Data\\Orvande\\settings.ini\t1\t0"))
        << trace;
    EXPECT_NE(std::string::npos, SettingsFile().find("Anna"));
    ExpectNoSecrets();
}
