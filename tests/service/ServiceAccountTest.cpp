/* Accounts of the running service: over real sockets, across restarts, and what is left of passwords. */
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <latch>
#include <sstream>
#include <thread>
#include <vector>

#include "HttpConnection.h"
#include "ServiceProcess.h"
#include "TemporaryFolder.h"
#include "WireBytes.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* accountPath = "/cgi-bin/licapp.cgi";

class ServiceAccount : public testing::Test {
protected:
    [[nodiscard]] std::string Data() const { return (folder.Path() / "data").string(); }

    [[nodiscard]] std::vector<std::string> Arguments() const {
        return {"--port", "0", "--data", Data(), "--made-up", "1"};
    }

    [[nodiscard]] HttpReply Post(std::string_view body, const std::string& origin = {}) const {
        return Exchange(port, PostRequest(origin + accountPath, body));
    }

    [[nodiscard]] HttpReply Ask(const std::string& method) const {
        return Exchange(port, method + ' ' + accountPath + " HTTP/1.1\r\nConnection: close\r\n\r\n");
    }

    /* Ends the service; gives its log. */
    std::string Log() {
        EXPECT_EQ(service.End(), 0);
        return service.Errors();
    }

    TemporaryFolder folder;
    ServiceProcess service{Arguments()};
    int port = service.WaitForPort();
};

std::string Contents(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

/* A password of lower-case letters as it could lie in a file. */
std::vector<std::string> FormsOf(const std::string& password) {
    std::string upper;
    std::string low;
    std::string high;
    std::string hex;
    std::string packed;
    for (const char letter : password) {
        upper += static_cast<char>(letter - 'a' + 'A');
        low += {letter, '\0'};
        high += {'\0', letter};
        hex += {"0123456789abcdef"[letter >> 4], "0123456789abcdef"[letter & 15]};
        packed += static_cast<char>(letter - 'a' + 11);
    }
    const std::string reversed(password.rbegin(), password.rend());
    return {password, upper, low, high, hex, packed, reversed};
}

void ExpectNoFormOf(const std::string& password, const std::string& text) {
    for (const std::string& form : FormsOf(password))
        EXPECT_EQ(text.find(form), std::string::npos) << testing::PrintToString(form);
}

}  // namespace

TEST_F(ServiceAccount, AccountIsCreatedAndSignsIn) {
    const HttpReply creation = Post(Creation().Bytes());
    EXPECT_EQ(creation.status, 200);
    EXPECT_THAT(creation.headers, HasSubstr("Content-Type: application/octet-stream\r\n"));
    EXPECT_EQ(creation.body, Int32Bytes(0));
    EXPECT_EQ(Post(SignInBytes(u"anna", u"secret1"), "http://online.orvande.example:80").body,
              Int32Bytes(0) + Int32Bytes(0));
    EXPECT_THAT(Log(), AllOf(HasSubstr("POST /cgi-bin/licapp.cgi 200 4\n"),
                             HasSubstr("POST http://online.orvande.example:80/cgi-bin/licapp.cgi 200 8\n"),
                             Not(HasSubstr("refused"))));
}

TEST_F(ServiceAccount, RefusalIsAStatusAndALineInTheLog) {
    // On one connection, so that the lines come in order.
    HttpConnection connection(port);
    const std::string signIn = SignInBytes(u"anna", u"secret1");
    connection.Send("POST /cgi-bin/licapp.cgi HTTP/1.1\r\nContent-Length: " + std::to_string(signIn.size()) +
                    "\r\n\r\n" + signIn);
    const HttpReply reply = connection.ReadReply();
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, Int32Bytes(4));
    connection.Send(PostRequest(accountPath, ""));
    EXPECT_EQ(connection.ReadReply().body, Int32Bytes(1));
    EXPECT_EQ(
        Log(),
        "licapp.cgi: refused with status 4: no account of that user ID\nPOST /cgi-bin/licapp.cgi 200 4\n"
        "licapp.cgi: refused with status 1: a body of 0 bytes\nPOST /cgi-bin/licapp.cgi 200 4\n");
}

TEST_F(ServiceAccount, AccountsSurviveARestart) {
    ASSERT_EQ(Post(Creation().Bytes()).body, Int32Bytes(0));
    EXPECT_EQ(service.End(), 0);
    ServiceProcess second(Arguments());
    port = second.WaitForPort();
    EXPECT_EQ(Post(SignInBytes(u"anna", u"secret1")).body, Int32Bytes(0) + Int32Bytes(0));
    EXPECT_EQ(Post(SignInBytes(u"anna", u"secret2")).body, Int32Bytes(5));
    EXPECT_EQ(Post(Creation().Bytes()).body, Int32Bytes(2));
    EXPECT_EQ(second.End(), 0);
}

TEST_F(ServiceAccount, AccountSurvivesAServiceThatIsKilled) {
    ASSERT_EQ(Post(Creation().Bytes()).body, Int32Bytes(0));
    service.Signal(SIGKILL);
    EXPECT_EQ(service.WaitForEnd(), -1);
    ServiceProcess second(Arguments());
    port = second.WaitForPort();
    EXPECT_EQ(Post(SignInBytes(u"anna", u"secret1")).body, Int32Bytes(0) + Int32Bytes(0));
}

TEST_F(ServiceAccount, OfSimultaneousCreationsWithOneUserIdOneSucceeds) {
    // Two services share the folder.
    ServiceProcess second(Arguments());
    const int ports[] = {port, second.WaitForPort()};
    constexpr size_t count = 8;
    std::vector<std::string> replies(count);
    std::latch start(count);
    std::vector<std::thread> threads;
    for (size_t index = 0; index < count; ++index) {
        threads.emplace_back([&, index] {
            Creation creation;
            creation.email.insert(0, index + 1, u'a');
            start.arrive_and_wait();
            replies[index] = Exchange(ports[index % 2], PostRequest(accountPath, creation.Bytes())).body;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::count(replies.begin(), replies.end(), Int32Bytes(0)), 1);
    EXPECT_EQ(std::count(replies.begin(), replies.end(), Int32Bytes(2)), static_cast<int64_t>(count) - 1);
    EXPECT_EQ(Post(SignInBytes(u"anna", u"secret1")).body, Int32Bytes(0) + Int32Bytes(0));
}

TEST_F(ServiceAccount, OtherMethodsAreNotAllowedAndOtherPathsNotFound) {
    for (const char* method : {"GET", "HEAD", "PUT", "PATCH", "DELETE"}) {
        const HttpReply reply = Ask(method);
        EXPECT_EQ(reply.status, 405) << method;
        EXPECT_THAT(reply.headers, HasSubstr("Allow: POST\r\n")) << method;
    }
    for (const char* path : {"/cgi-bin/licappXcgi", "/cgi-bin/licapp.cgi/", "/licapp.cgi"})
        EXPECT_EQ(Exchange(port, PostRequest(path, Creation().Bytes())).status, 404) << path;
}

TEST_F(ServiceAccount, BodyOfMoreThanAMegabyteIsRefusedAndLongOnesTakeBoundedMemory) {
    const uint64_t before = service.PeakMemory();
    EXPECT_EQ(Post(std::string(1048577, '\x0A')).status, 413);
    std::string body = Int32Bytes(10);
    for (int string = 0; string < 5; ++string)
        body += TextBytes(std::u16string(100000, u'x'));
    body += '\1' + Int32Bytes(0) + TextBytes(u"English");
    EXPECT_EQ(Post(body).body, Int32Bytes(9));
    EXPECT_EQ(Post(Int32Bytes(8) + Int32Bytes(INT32_MAX)).body, Int32Bytes(8));
    EXPECT_LT(service.PeakMemory() - before, 32u << 20);
}

TEST_F(ServiceAccount, NoPasswordIsInTheLogOrInTheData) {
    const std::string right = "qwzxvkjh";
    const std::string wrong = "jkvxzwqq";
    const std::u16string rightText(right.begin(), right.end());
    const std::u16string wrongText(wrong.begin(), wrong.end());
    Creation creation;
    creation.password = rightText;
    EXPECT_EQ(Post(creation.Bytes()).body, Int32Bytes(0));
    EXPECT_EQ(Post(creation.Bytes()).body, Int32Bytes(2));
    EXPECT_EQ(Post(SignInBytes(u"anna", rightText)).body, Int32Bytes(0) + Int32Bytes(0));
    EXPECT_EQ(Post(SignInBytes(u"anna", wrongText)).body, Int32Bytes(5));
    EXPECT_EQ(Post(SignInBytes(wrongText, wrongText)).body, Int32Bytes(4));
    EXPECT_EQ(Post(creation.Bytes() + wrong).body, Int32Bytes(8));
    EXPECT_EQ(Post(wrong).body, Int32Bytes(7));
    const std::string log = Log();
    ASSERT_THAT(log, HasSubstr("refused with status 5"));
    size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Data())) {
        if (!entry.is_regular_file()) continue;
        SCOPED_TRACE(entry.path().string());
        const std::string contents = Contents(entry.path());
        ExpectNoFormOf(right, contents);
        ExpectNoFormOf(wrong, contents);
        if (contents.find("$argon2id$") != std::string::npos) ++files;
    }
    EXPECT_EQ(files, 1u);
    ExpectNoFormOf(right, log);
    ExpectNoFormOf(wrong, log);
    ExpectNoFormOf(right, service.Output());
}
