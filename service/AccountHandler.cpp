#include "AccountHandler.h"

#include <optional>
#include <string>

#include "AccountText.h"
#include "Password.h"
#include "WireReader.h"
#include "WireWriter.h"
#include "transport/Protocol.h"

namespace {

constexpr int32_t goodAccountState = 0;
constexpr const char* badLengthText = "the values and the body do not end together";

struct SignInRequest {
    WireString userId;
    WireString password;
};

struct CreationRequest {
    WireString userId;
    WireString password;
    WireString name;
    WireString referrer;
    WireString email;
    uint8_t wantsUpdates = 0;
    int32_t vendor = 0;
    WireString language;
};

CgiReply Refused(AccountStatus status, const std::string& why) {
    return RefusedReply(static_cast<int32_t>(status), why);
}

std::optional<SignInRequest> ReadSignIn(WireReader& reader) {
    const auto userId = reader.ReadString();
    const auto password = reader.ReadString();
    const auto productCode = reader.ReadInt32();
    if (!userId || !password || !productCode || reader.Remaining() != 0) return std::nullopt;
    return SignInRequest{*userId, *password};
}

std::optional<CreationRequest> ReadCreation(WireReader& reader) {
    const auto userId = reader.ReadString();
    const auto password = reader.ReadString();
    const auto name = reader.ReadString();
    const auto referrer = reader.ReadString();
    const auto email = reader.ReadString();
    const auto wantsUpdates = reader.ReadByte();
    const auto vendor = reader.ReadInt32();
    const auto language = reader.ReadString();
    if (!userId || !password || !name || !referrer || !email || !wantsUpdates || !vendor || !language ||
        reader.Remaining() != 0)
        return std::nullopt;
    return CreationRequest{*userId, *password, *name, *referrer, *email, *wantsUpdates, *vendor, *language};
}

CgiReply SignIn(const AccountStore& accounts, WireReader& reader) {
    const std::optional<SignInRequest> request = ReadSignIn(reader);
    if (!request) return Refused(AccountStatus::badLength, badLengthText);
    const std::u16string userId = request->userId.Text();
    const std::optional<std::string> hash = accounts.PasswordHashOf(Trimmed(userId));
    if (!hash) return Refused(AccountStatus::unknownUserId, "no account of that user ID");
    if (!IsHashOf(*hash, Password(request->password)))
        return Refused(AccountStatus::wrongPassword, "not the account's password");
    WireWriter writer;
    writer.WriteInt32(static_cast<int32_t>(AccountStatus::success));
    writer.WriteInt32(goodAccountState);
    return {writer.TakeBytes(), {}};
}

bool HasLongText(const CreationRequest& request) {
    return request.userId.Size() > mostAccountTextUnits || request.name.Size() > mostAccountTextUnits ||
           request.referrer.Size() > mostAccountTextUnits || request.language.Size() > mostAccountTextUnits;
}

CgiReply AddAccount(AccountStore& accounts, const AccountRecord& account) {
    switch (accounts.Add(account)) {
        case AccountAdded::userIdTaken:
            return Refused(AccountStatus::userIdTaken, "the user ID is taken");
        case AccountAdded::emailTaken:
            return Refused(AccountStatus::emailTaken, "the e-mail address is taken");
        case AccountAdded::yes:
            break;
    }
    WireWriter writer;
    writer.WriteInt32(static_cast<int32_t>(AccountStatus::success));
    return {writer.TakeBytes(), {}};
}

CgiReply Create(AccountStore& accounts, WireReader& reader) {
    const std::optional<CreationRequest> request = ReadCreation(reader);
    if (!request) return Refused(AccountStatus::badLength, badLengthText);
    if (request->wantsUpdates > 1)
        return Refused(AccountStatus::badFlag, "a flag of " + std::to_string(request->wantsUpdates));
    if (HasLongText(*request)) return Refused(AccountStatus::textTooLong, "a text is too long");
    AccountRecord account;
    account.userId = Trimmed(request->userId.Text());
    if (account.userId.empty()) return Refused(AccountStatus::noUserId, "no user ID");
    const Password password(request->password);
    if (password.Counted().size() < fewestPasswordCharacters)
        return Refused(AccountStatus::shortPassword, "the password is too short");
    account.email = Trimmed(request->email.Text());
    if (!IsEmailAddress(account.email)) return Refused(AccountStatus::badEmail, "no e-mail address");
    account.passwordHash = HashOf(password);
    account.name = request->name.Text();
    account.referrer = request->referrer.Text();
    account.wantsUpdates = request->wantsUpdates == 1;
    account.vendor = request->vendor;
    account.language = request->language.Text();
    return AddAccount(accounts, account);
}

}  // namespace

CgiReply HandleAccounts(AccountStore& accounts, std::string_view request) {
    WireReader reader(request);
    const std::optional<int32_t> code = reader.ReadInt32();
    if (!code) {
        return Refused(AccountStatus::noRequest, "a body of " + std::to_string(request.size()) + " bytes");
    }
    try {
        if (*code == signInCode) return SignIn(accounts, reader);
        if (*code == accountCreationCode) return Create(accounts, reader);
    } catch (const DatabaseError& error) {
        return Refused(AccountStatus::serviceFailure, error.what());
    }
    return Refused(AccountStatus::unknownCode, "request code " + std::to_string(*code));
}
