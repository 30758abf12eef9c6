#include "mapshop/FailureText.h"

#include <gtest/gtest.h>

#include "LMOnline.h"

namespace {

/* Narrow, for messages that can be read. */
std::string Sentence(uint32_t cause) {
    const std::wstring text = FailureSentence(L"It failed", cause, {L"maps.example", L"/a.map"});
    return {text.begin(), text.end()};
}

std::string Words(uint32_t cause) {
    const std::string sentence = Sentence(cause);
    return sentence.substr(0, sentence.rfind(" ("));
}

}  // namespace

TEST(FailureText, IsOneSentenceOfWhatFailedAndWhyAndWhatToDoWithTheCode) {
    EXPECT_EQ("It failed: the host maps.example is not known; check its name and the connection (12007).",
              Sentence(12007));
}

TEST(FailureText, KnowsWhatTheNetworkTells) {
    const struct {
        uint32_t cause;
        const char* sentence;
    } cases[] = {
        {12002, "It failed: maps.example does not answer; try again, or check the connection (12002)."},
        {12029,
         "It failed: maps.example cannot be reached; check the connection, or try again later (12029)."},
        {12030, "It failed: the connection to maps.example was lost; try again (12030)."},
        {12031, "It failed: the connection to maps.example was lost; try again (12031)."},
        {10054, "It failed: the connection to maps.example was lost; try again (10054)."},
        {12152,
         "It failed: what answers at maps.example is no web server; check its name and the proxy settings "
         "(12152)."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.sentence, Sentence(c.cause));
}

TEST(FailureText, KnowsWhatTheStorageTells) {
    EXPECT_EQ("It failed: its folder does not exist, or its name is too long; name another file (3).",
              Sentence(3));
    EXPECT_EQ("It failed: access to it is denied; name a file that may be written (5).", Sentence(5));
    EXPECT_EQ("It failed: another program has it open; close it there (32).", Sentence(32));
    EXPECT_EQ("It failed: there is no room for it; free some and try again (112).", Sentence(112));
    EXPECT_EQ("It failed: memory ran out; close other programs and try again (8).", Sentence(8));
    EXPECT_NE(Words(99), Words(2));
    EXPECT_NE(Words(99), Words(183));
}

TEST(FailureText, TellsTheHttpStatusByItsNumber) {
    EXPECT_EQ("It failed: maps.example does not have /a.map; check the name (HTTP 404).",
              Sentence(LM_ERROR_HTTP_STATUS | 404U));
    EXPECT_EQ(
        "It failed: the proxy wants to know its user; sign in to the network, or check its settings "
        "(HTTP 407).",
        Sentence(LM_ERROR_HTTP_STATUS | 407U));
    for (const uint32_t status : {500U, 503U, 599U}) {
        EXPECT_EQ("It failed: maps.example is in trouble; try again later",
                  Words(LM_ERROR_HTTP_STATUS | status));
    }
    for (const uint32_t status : {401U, 403U, 416U, 301U})
        EXPECT_NE(Words(LM_ERROR_HTTP_STATUS | 418U), Words(LM_ERROR_HTTP_STATUS | status)) << status;
    for (const uint32_t status : {0U, 299U, 418U, 600U, 0xFFFFFFU}) {
        EXPECT_EQ("It failed: maps.example refused /a.map; check the name",
                  Words(LM_ERROR_HTTP_STATUS | status));
    }
}

TEST(FailureText, TellsTheServicesStatus) {
    EXPECT_EQ("It failed: the service refused; try again later, or ask who runs maps.example (status 9).",
              Sentence(LM_ERROR_SERVICE_STATUS | 9U));
    EXPECT_EQ("It failed: what maps.example answered cannot be read; try again later (13).", Sentence(13));
    EXPECT_EQ(Words(LM_ERROR_SERVICE_STATUS), Words(LM_ERROR_SERVICE_STATUS | 0xFFFFFFU));
}

TEST(FailureText, TellsTheLibrarysOwnCodesInHexadecimal) {
    EXPECT_EQ("It failed: it was cancelled (0x20000002).", Sentence(LM_ERROR_CANCELLED));
    EXPECT_EQ("It failed: the reply ended early; try again (0x20000003).", Sentence(LM_ERROR_REPLY_ENDED));
    EXPECT_EQ("It failed: the library does not take it; ask for something else (0x20000001).",
              Sentence(LM_ERROR_BAD_ARGUMENT));
}

TEST(FailureText, HasASentenceForEveryOtherCode) {
    for (const uint32_t cause : {12001U, 12999U})
        EXPECT_EQ("It failed: the network reports an error; check the connection and try again",
                  Words(cause));
    for (const uint32_t cause : {0U, 1U, 31U, 11999U, 13000U, 0x2FFFFFFFU, 0xFFFFFFFFU})
        EXPECT_EQ("It failed: the system reports an error; try again", Words(cause));
    EXPECT_EQ("It failed: the system reports an error; try again (31).", Sentence(31));
}

TEST(FailureText, NamesAreTakenAsTheyAre) {
    EXPECT_EQ(L"x: {what} does not have {host}; check the name (HTTP 404).",
              FailureSentence(L"x", LM_ERROR_HTTP_STATUS | 404U, {L"{what}", L"{host}"}));
}
