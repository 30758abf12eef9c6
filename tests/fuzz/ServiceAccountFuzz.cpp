/* Requests for accounts, which anybody may send to the service. The input is the request; there is no account
 * yet. */
#include "AccountHandler.h"
#include "AccountText.h"
#include "Database.h"
#include "FuzzInput.h"
#include "MadeUpMaps.h"
#include "MapCatalogue.h"
#include "ReplyReading.h"
#include "service/TemporaryFolder.h"

namespace {

constexpr int32_t signIn = 8;
constexpr int32_t creation = 10;

std::string Int32Bytes(int32_t value) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<uint32_t>(value) >> shift);
    return bytes;
}

std::string TextBytes(const std::u16string& text) {
    std::string bytes = Int32Bytes(static_cast<int32_t>(text.size()));
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit);
        bytes += static_cast<char>(unit >> 8U);
    }
    return bytes;
}

/* Takes the values of a request; nothing is taken of a value that is not whole. */
class Values {
public:
    explicit Values(std::string_view bytes) : rest(bytes) {}

    int32_t Int32() {
        ReplyReading reading(Take(4));
        return reading.Int32(0);
    }

    std::u16string Text() {
        const int32_t size = Int32();
        if (size < 0 || size > 100000) isWhole = false;
        const std::string_view bytes = isWhole ? Take(2 * static_cast<size_t>(size)) : std::string_view();
        const FuzzBytes raw(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        return FuzzInput(raw).TakeUnits(raw.size());
    }

    uint8_t Byte() {
        const std::string_view taken = Take(1);
        return taken.empty() ? uint8_t{0} : static_cast<uint8_t>(taken[0]);
    }

    /* Whether all values were there, and nothing else is. */
    [[nodiscard]] bool AreAll() const { return isWhole && rest.empty(); }

private:
    std::string_view Take(size_t size) {
        isWhole = isWhole && size <= rest.size();
        const std::string_view taken = isWhole ? rest.substr(0, size) : std::string_view();
        rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest;
    bool isWhole = true;
};

/* What is asked for, and what is to be answered. */
struct Request {
    AccountStatus status = AccountStatus::success;
    std::u16string userId;
    std::u16string password;
};

Request ReadCreation(Values& values) {
    Request request;
    request.userId = values.Text();
    request.password = values.Text();
    const size_t nameSize = values.Text().size();
    const size_t referrerSize = values.Text().size();
    const std::u16string email = values.Text();
    const uint8_t flag = values.Byte();
    values.Int32();
    const size_t languageSize = values.Text().size();
    const auto counted = std::ranges::count_if(
        request.password, [](char16_t unit) { return unit < 0x80 && isalnum(unit) != 0; });
    if (!values.AreAll())
        request.status = AccountStatus::badLength;
    else if (flag > 1)
        request.status = AccountStatus::badFlag;
    else if (std::max({request.userId.size(), nameSize, referrerSize, languageSize}) > 1000)
        request.status = AccountStatus::textTooLong;
    else if (request.userId.find_first_not_of(u" \t\r\n") == std::u16string::npos)
        request.status = AccountStatus::noUserId;
    else if (counted < 6)
        request.status = AccountStatus::shortPassword;
    else if (!IsEmailAddress(Trimmed(email)))
        request.status = AccountStatus::badEmail;
    return request;
}

Request ReadRequest(const std::string& body) {
    if (body.size() < 4) return {AccountStatus::noRequest, {}, {}};
    Values values(body);
    const int32_t code = values.Int32();
    if (code == creation) return ReadCreation(values);
    if (code != signIn) return {AccountStatus::unknownCode, {}, {}};
    values.Text();
    values.Text();
    values.Int32();
    return {values.AreAll() ? AccountStatus::unknownUserId : AccountStatus::badLength, {}, {}};
}

class ServiceAccount final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        const std::string body = FuzzInput(bytes).TakeRest();
        const Request request = ReadRequest(body);
        const CgiReply reply = Answer(body);
        RequireStatus(reply, request.status);
        if (request.status != AccountStatus::success) return;
        RequireAccount(body, request);
        database.Execute("DELETE FROM account");
    }

private:
    CgiReply Answer(const std::string& body) { return HandleAccounts(accounts, body); }

    static void RequireStatus(const CgiReply& reply, AccountStatus status) {
        Require(reply.body == Int32Bytes(static_cast<int32_t>(status)), "the status tells what is wrong");
        Require(reply.refusal.empty() == (status == AccountStatus::success), "refusals are logged");
    }

    /* The account that `body` has created is there. */
    void RequireAccount(const std::string& body, const Request& request) {
        const std::string userId = Int32Bytes(signIn) + TextBytes(request.userId);
        const CgiReply signedIn = Answer(userId + TextBytes(request.password) + Int32Bytes(7));
        Require(signedIn.body == Int32Bytes(0) + Int32Bytes(0), "who has an account can sign in");
        RequireStatus(Answer(userId + TextBytes(u"x") + Int32Bytes(7)), AccountStatus::wrongPassword);
        RequireStatus(Answer(body), AccountStatus::userIdTaken);
    }

    TemporaryFolder folder;
    MapCatalogue catalogue{folder.Path(), MadeUpMaps(1)};
    AccountStore accounts{folder.Path() / MapCatalogue::fileName};
    Database database{folder.Path() / MapCatalogue::fileName};
};

const bool isAdded = AddFuzzTarget<ServiceAccount>("ServiceAccount");

}  // namespace
