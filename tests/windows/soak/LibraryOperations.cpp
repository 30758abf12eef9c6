#include "LMAccount.h"
#include "helpers/ShippedLibrary.h"
#include "helpers/Widened.h"
#include "soak/Operations.h"
#include "support/Causes.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr WCHAR host[] = L"maps.example";

struct Loaded {
    const ShippedLibrary library;
    const LoadedModule companion{L"OrvandeAccount.dll"};
    const LMAccountShowSignInFunction showSignIn = companion.Find("LMAccountShowSignIn");
    const LMAccountShowCreateFunction showCreate = companion.Find("LMAccountShowCreate");
};

std::string HashOf(const MapShopResult& result) {
    Hash hash;
    hash.Take(&result.number, sizeof result.number);
    for (const LMChar* text : {result.text1, result.text2, result.text3})
        hash.Take(text, (wcslen(text) + 1) * sizeof *text);
    return hash.Text();
}

class LibrarySoak : public Operations {
public:
    explicit LibrarySoak(const std::wstring& folder)
        : target(folder + L"\\file.map"), loaded(std::make_unique<Loaded>()) {}

    std::string Search(const Words& boxes) override {
        std::vector<int32_t> items;
        for (const std::string& number : boxes)
            items.push_back(std::stoi(number));
        MapShopSearch* search = nullptr;
        const DWORD cause = CauseOf([&] {
            search = loaded->library.mapShopSearch(items.empty() ? nullptr : items.data(),
                                                   static_cast<int32_t>(items.size() / 4));
        });
        std::string hashes;
        MapShopResult result;
        while (loaded->library.mapShopGetNext(search, &result) != 0)
            hashes += ' ' + HashOf(result);
        const int32_t final = loaded->library.mapShopClose(search);
        return std::to_string(cause) + ' ' + std::to_string(final) + hashes;
    }

    std::string Download(const Words& words) override {
        int left = std::stoi(words[1]);
        int32_t result = 0;
        DownloadProgress progress{-7, -7};
        const DWORD cause = CauseOf([&] {
            result = loaded->library.downloadWithProgress(host, Widened(words[0]).c_str(), target.c_str(),
                                                          CountDown, &left, &progress);
        });
        return std::to_string(cause) + ' ' + std::to_string(result) + ' ' +
               std::to_string(progress.bytesReceived) + ' ' + std::to_string(progress.totalBytes);
    }

    std::string ReadRange(const Words& words) override {
        int left = std::stoi(words[3]);
        int32_t result = 0;
        std::string buffer(std::stoul(words[2]), '.');
        const DWORD cause = CauseOf([&] {
            result = loaded->library.readRange(host, Widened(words[0]).c_str(), std::stoll(words[1]),
                                               static_cast<int32_t>(buffer.size()), buffer.data(), CountDown,
                                               &left);
        });
        Hash hash;
        hash.Take(buffer.data(), buffer.size());
        return std::to_string(cause) + ' ' + std::to_string(result) + ' ' + hash.Text();
    }

    std::string SignIn(const Words& words) override {
        return Show(loaded->showSignIn, SignInScript(words, message));
    }

    std::string Create(const Words& words) override {
        return Show(loaded->showCreate, CreationScript(words, message));
    }

    void Reload() override {
        loaded.reset();
        for (const WCHAR* file : {L"OrvandeOnline.dll", L"OrvandeAccount.dll"}) {
            if (GetModuleHandleW(file) != nullptr) throw std::runtime_error("a DLL is not unloaded");
        }
        loaded = std::make_unique<Loaded>();
    }

private:
    /* Both functions have this type. */
    std::string Show(LMAccountShowSignInFunction show, ScreenUser::Script script) {
        LMAccountRecord record{};
        record.size = sizeof record;
        message.clear();
        int32_t result = 0;
        DWORD cause = 0;
        {
            const ScreenUser user(std::move(script));
            cause = CauseOf([&] { result = show(&record, nullptr); });
        }
        std::string shown(message.begin(), message.end());
        std::replace(shown.begin(), shown.end(), '\n', ' ');
        return std::to_string(cause) + ' ' + std::to_string(result) + ' ' + shown;
    }

    std::wstring message;
    const std::wstring target;
    std::unique_ptr<Loaded> loaded;
};

}  // namespace

std::unique_ptr<Operations> LibraryOperations(const std::wstring& folder) {
    return std::make_unique<LibrarySoak>(folder);
}
