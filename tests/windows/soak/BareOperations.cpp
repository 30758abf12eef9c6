#include "Platform.h"

#include "helpers/Widened.h"
#include "soak/Operations.h"
#include "transport/InternetHandle.h"

namespace {

constexpr DWORD noCookies = INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_PRAGMA_NOCACHE;
constexpr DWORD transferFlags = noCookies | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_AUTO_REDIRECT;

template <class Value>
void Append(std::string& bytes, const Value& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

/* One request's connection and request; what is asked and how it goes on is the caller's. */
struct Request {
    InternetHandle connection;
    InternetHandle request;

    Request(HINTERNET session, const WCHAR* host, const WCHAR* verb, const std::string& path, DWORD flags) {
        connection.Reset(InternetConnectW(session, host, INTERNET_DEFAULT_HTTP_PORT, nullptr, nullptr,
                                          INTERNET_SERVICE_HTTP, 0, 0));
        request.Reset(HttpOpenRequestW(connection.Get(), verb, Widened(path).c_str(), nullptr, nullptr,
                                       nullptr, flags, 0));
    }

    bool Send(const std::wstring& header, std::string body = {}) {
        return HttpSendRequestW(request.Get(), header.empty() ? nullptr : header.c_str(),
                                static_cast<DWORD>(header.size()), body.empty() ? nullptr : body.data(),
                                static_cast<DWORD>(body.size())) != FALSE;
    }

    /* Reads on until there is no more, or until `take` has had enough. */
    template <class Take>
    void Read(Take take) {
        char chunk[4096];
        for (DWORD received = 0;
             InternetReadFile(request.Get(), chunk, sizeof chunk, &received) && received > 0;) {
            if (!take(chunk, received)) return;
        }
    }
};

/* Posts to a program of the service, with a session for it alone. */
void Post(const std::string& path, const std::string& body) {
    const InternetHandle session(InternetOpenW(L"bare", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    Request request(session.Get(), L"online.orvande.example", L"POST", path, noCookies);
    if (request.Send({}, body)) request.Read([](const char*, DWORD) { return true; });
}

class BareSoak : public Operations {
public:
    explicit BareSoak(const std::wstring& folder) : target(folder + L"\\file.map") { Reload(); }

    std::string Search(const Words& boxes) override {
        std::string body;
        Append(body, int32_t{101});
        Append(body, static_cast<int32_t>(boxes.size() / 4));
        for (const std::string& number : boxes)
            Append(body, static_cast<int32_t>(std::stoi(number)));
        Post("/cgi-bin/mapstore.cgi", body);
        return "done";
    }

    std::string Download(const Words& words) override {
        int left = std::stoi(words[1]);
        Request request(session.Get(), L"maps.example", L"GET", words[0],
                        transferFlags | INTERNET_FLAG_RELOAD | INTERNET_FLAG_RESYNCHRONIZE);
        if (!request.Send({})) return "not sent";
        const HANDLE file = CreateFileW(target.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        request.Read([&](const char* bytes, DWORD size) {
            DWORD written = 0;
            return CountDown(&left) != 0 && WriteFile(file, bytes, size, &written, nullptr) != FALSE;
        });
        CloseHandle(file);
        DeleteFileW(target.c_str());
        return "done";
    }

    std::string ReadRange(const Words& words) override {
        int left = std::stoi(words[3]);
        Request request(session.Get(), L"maps.example", L"GET", words[0], transferFlags);
        const int64_t first = std::stoll(words[1]);
        const std::wstring header = L"Range:bytes=" + std::to_wstring(first) + L"-" +
                                    std::to_wstring(first + std::stoll(words[2]) - 1) + L"\n";
        if (!request.Send(header)) return "not sent";
        request.Read([&](const char*, DWORD) { return CountDown(&left) != 0; });
        return "done";
    }

    std::string SignIn(const Words&) override { return "there is no dialog"; }
    std::string Create(const Words&) override { return "there is no dialog"; }

    void Reload() override {
        session.Reset();
        session.Reset(InternetOpenW(L"bare", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    }

private:
    const std::wstring target;
    InternetHandle session;
};

}  // namespace

std::unique_ptr<Operations> BareOperations(const std::wstring& folder) {
    return std::make_unique<BareSoak>(folder);
}
