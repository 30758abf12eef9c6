/* Replies to the request for a new account, which the user makes in the dialog. FuzzedReply.h tells what an
 * input is. */
#include "FuzzedDevice.h"
#include "FuzzedReply.h"
#include "account/CreateAccountDialog.h"
#include "frame/ResourceModule.h"
#include "modules/ResourceFile.h"
#include "ui/TranslationCatalogue.h"

namespace {

enum class End { Created, Cancelled, Open };

/* What the user is to see. */
struct Expected {
    End end = End::Open;
    std::u16string text;  // how the message begins
};

Expected ExpectedOf(const FuzzedReply& fuzzed) {
    ReplyReading reading(fuzzed.Arriving());
    const int32_t code = reading.Int32(-1);
    if (!reading.IsGood()) return {End::Open, u"Internal server error"};
    switch (code) {
        case 0:
            return {End::Created, u""};
        case 2:
            return {End::Open, u"This user name is already in use.\n"};
        case 3:
            return {End::Open, u"The password must be at least 6 letters or numbers"};
        case 13:
            return {End::Cancelled, u"An account already exists with the same email address."};
        case 14:
            return {End::Open, u"You must provide a valid email address."};
        default:
            break;
    }
    const std::string number = std::to_string(code);
    return {End::Open, u"The server returned error code " + std::u16string(number.begin(), number.end())};
}

class CreationReply final : public FuzzTarget {
public:
    CreationReply() {
        Device& device = handheld.device;
        device.SetResources(device.LibraryInstance(), ReadResourceFile(ORVANDE_FUZZ_RESOURCES));
        device.MakeFolder(u"\\Application Data\\Orvande");
        ownModule = device.LibraryInstance();
    }
    CreationReply(const CreationReply&) = delete;
    CreationReply& operator=(const CreationReply&) = delete;

    ~CreationReply() override {
        translationCatalogue.WriteUntranslatedFile({}, {});
        ownModule = nullptr;
    }

    void Run(FuzzBytes bytes) override {
        FuzzInput input(bytes);
        const FuzzedReply fuzzed(input);
        const Expected expected = ExpectedOf(fuzzed);
        handheld.BeginRun();
        fuzzed.GiveOn(handheld.device);
        handheld.device.UseDialog([&](DialogUser& user) { Use(user, expected); });
        Account account;
        account.userId = TEXT("Anna");
        Require(CreateAccount(account, nullptr) == (expected.end == End::Created),
                "only a code of 0 is a new account");
        RequireSettings(expected.end == End::Created);
        handheld.EndRun();
    }

private:
    void Use(DialogUser& user, const Expected& expected) const {
        if (!expected.text.empty()) handheld.device.AnswerMessageBox(IDOK);
        user.PressButton(IDOK);
        const auto& boxes = handheld.device.MessageBoxes();
        Require(boxes.size() == (expected.text.empty() ? 0U : 1U), "the user is told once");
        if (!boxes.empty()) Require(boxes[0].text.starts_with(expected.text), "the user is told why");
        Require(user.IsOpen() == (expected.end == End::Open), "he may try once more where that makes sense");
        if (user.IsOpen()) user.PressButton(IDCANCEL);
    }

    void RequireSettings(bool isCreated) const {
        const auto file = handheld.device.TakeFile(settings.Path());
        Require(file.has_value() == isCreated, "an account that is created is saved");
        if (!isCreated) return;
        Require(*file == "UserID=Anna\r\n", "the account is saved as it is");
        settings.Remove();
    }

    FuzzedDevice handheld;
    FuzzedFile settings{u"\\Application Data\\Orvande\\settings.ini"};
};

const bool isAdded = AddFuzzTarget<CreationReply>("CreationReply");

}  // namespace
