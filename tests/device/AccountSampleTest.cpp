/* The sample of the companion, and the companion that it is bound to, both as devices get them. */
#include "companion/CompanionTest.h"

#include <fstream>
#include <iterator>

#include "ImageFiles.h"
#include "Program.h"

namespace {

class AccountSample : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        std::ifstream stream(ImageFile("OrvandeAccount.dll"), std::ios::binary);
        device.PutFile(u"\\Program Files\\App\\OrvandeAccount.dll",
                       std::string(std::istreambuf_iterator<char>(stream), {}));
    }

    void Expect(DWORD exitCode, const std::string& output, std::u16string_view arguments) {
        const ProgramResult result = RunProgram(ImageFile("c-account.exe"), arguments);
        EXPECT_EQ(exitCode, result.exitCode);
        EXPECT_EQ(output, result.output);
    }

    void Answer(const MapShopReply& reply) {
        device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(reply.bytes));
    }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(AccountSample, SignsInWithItsArgumentsAndSaysWhyNot) {
    Answer(MapShopReply().Int32(0).Int32(0));
    Expect(0, "signed in as Anna\n", u"Anna secret1");
    EXPECT_EQ(MapShopReply().Int32(8).Text(TEXT("Anna")).Text(TEXT("secret1")).Int32(1).bytes,
              device.Requests().at(0).body);
    Answer(MapShopReply().Int32(4));
    Expect(1, "there is no such user\n", u"Anna secret1");
    Answer(MapShopReply().Int32(5));
    Expect(1, "the password is wrong\n", u"Anna secret1");
    Answer(MapShopReply().Int32(0).Int32(3));
    Expect(1, "the account cannot be used: state 3\n", u"Anna secret1");
    Answer(MapShopReply().Int32(9));
    Expect(1, "failed: error 0x22000009\n", u"Anna secret1");
}

TEST_F(AccountSample, ShowsTheDialogOfTheLibraryWhenNothingWasSaved) {
    Answer(MapShopReply().Int32(0).Int32(0));
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(u"Sign in to Your Account", user.Caption());
        user.Type(USER_ID_FIELD, u"J\u00F8rg");
        user.Type(PASSWORD_FIELD, u"secret1");
        user.PressButton(u"Sign in");
    });
    Expect(0, "signed in as J\xC3\xB8rg\n", u"");
    device.UseDialog([](DialogUser& user) { user.ChooseMenuItem(u"Cancel"); });
    Expect(1, "nobody is signed in\n", u"");
}
