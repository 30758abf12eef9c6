/* The companion's calls that show no dialog. */
#include "CompanionFlow.h"

namespace {

/* "secret1" is the codes 29, 15, 13, 28, 15, 30 and 2 and nine zeros, with the key. */
constexpr const char* savedAccount =
    "Passwd=46cb138b39f66f02af73d9488c21f5ba\r\nUserID=Anna+Maria+Bergmann\r\n";

class LoadAccount : public CompanionFlow {
public:
    void Prepare() override {
        CompanionFlow::Prepare();
        settings->Put(savedAccount);
    }
    void Run() override {
        result = LMAccountLoad(&record);
        error = GetLastError();
    }
    std::string Outcome() override {
        const WideString userId = record.userId;
        const WideString password = record.password;
        const bool isCut = WideStringView(TEXT("Anna Maria Bergmann")).starts_with(userId) &&
                           WideStringView(TEXT("secret1")).starts_with(password);
        const bool isWhole = isCut && userId.size() == 19 && password.size() == 7;
        return ResultText() + ", " + (isWhole ? "whole" : isCut ? "cut" : RecordText());
    }
};

class SaveAccount : public CompanionFlow {
public:
    void Prepare() override {
        CompanionFlow::Prepare();
        settings->Put("UserID=Old\r\n");
        saved = savedAccount;
        Put(TEXT("Anna Maria Bergmann"), record.userId);
        Put(TEXT("secret1"), record.password);
        record.savePassword = 1;
    }
    void Run() override {
        result = LMAccountSave(&record);
        error = GetLastError();
    }
    std::string Outcome() override { return ResultText() + ", " + SettingsText(); }
};

class SignInToAccount : public CompanionFlow {
public:
    explicit SignInToAccount(int32_t serviceStatus) : status(serviceStatus) {}

    void SetUp() override {
        CompanionFlow::SetUp();
        Answer(MapShopReply().Int32(status).Int32(0));
    }
    void Prepare() override {
        CompanionFlow::Prepare();
        Put(TEXT("Anna Maria Bergmann"), record.userId);
        Put(TEXT("secret1"), record.password);
    }
    void Run() override {
        result = LMAccountSignIn(&record);
        error = GetLastError();
    }
    std::string Outcome() override { return ResultText(); }

private:
    const int32_t status;
};

}  // namespace

std::vector<FlowRow> CompanionRows() {
    std::vector<FlowRow> rows;
    rows.push_back({"AccountLoad",
                    Library::Account,
                    Make<LoadAccount>(),
                    "1, error 0, whole",
                    {
                        // Without the folder there is no path, which no file has.
                        {"SHGetSpecialFolderPathW", {"0, error 3, as it was", "+0, error E, as it was"}},
                        {"_wfopen", {"0, error E, as it was"}},
                        // A file that cannot be read to its end counts as ending there.
                        {"fread", {"1, error 0, cut", "1, error 0, whole"}},
                        {"memory", {"0, error 8, as it was"}},
                    }});
    rows.push_back({"AccountSave",
                    Library::Account,
                    Make<SaveAccount>(),
                    "1, error 0, saved",
                    {
                        {"SHGetSpecialFolderPathW", {"0, error 3, old", "+0, error E, old"}},
                        {"_wfopen", {"0, error E, old"}},
                        {"fwrite", {"0, error E, cut"}},
                        {"memory", {"0, error 8, old"}},
                    }});
    const std::vector<Statement> signing = {
        {"InternetOpenW", {"0, error E"}},    {"InternetConnectW", {"0, error E"}},
        {"HttpOpenRequestW", {"0, error E"}}, {"HttpSendRequestW", {"0, error E"}},
        {"InternetReadFile", {"0, error E"}}, {"memory", {"0, error 8"}},
    };
    rows.push_back(
        {"AccountSignIn", Library::Account, Make<SignInToAccount>(int32_t{0}), "1, error 0", signing});
    rows.push_back({"AccountSignInRefused", Library::Account, Make<SignInToAccount>(int32_t{5}),
                    "0, error 0x22000005", signing});
    return rows;
}
