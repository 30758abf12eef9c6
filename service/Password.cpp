#include "Password.h"

#include <sodium.h>

#include <mutex>
#include <stdexcept>

namespace {

// For a development server: some checks a second are no burden, and guessing passwords still takes time.
constexpr unsigned long long hashPasses = 2;
constexpr size_t hashMemory = 8 << 20;

/* The holder of such an object may compute a hash. There is only one at a time, because many hashes at once
 * would take memory without a limit. */
class HashTurn {
public:
    HashTurn() {
        if (sodium_init() < 0) throw std::runtime_error("libsodium cannot be used here");
    }

private:
    static std::mutex& OneAtATime() {
        static std::mutex mutex;
        return mutex;
    }

    std::lock_guard<std::mutex> lock{OneAtATime()};
};

/* The counted form of a character; 0 when it does not count. */
char CountedForm(char16_t unit) {
    if ((unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z')) return static_cast<char>(unit);
    if (unit >= u'A' && unit <= u'Z') return static_cast<char>(unit - u'A' + u'a');
    return 0;
}

}  // namespace

Password::Password(const WireString& typed) {
    for (size_t index = 0; index < typed.Size() && size < characters.size(); ++index) {
        const char counted = CountedForm(typed[index]);
        if (counted != 0) characters[size++] = counted;
    }
}

Password::~Password() {
    sodium_memzero(characters.data(), characters.size());
}

std::string HashOf(const Password& password) {
    const HashTurn turn;
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    const std::string_view counted = password.Counted();
    if (crypto_pwhash_str(hash.data(), counted.data(), counted.size(), hashPasses, hashMemory) != 0)
        throw std::runtime_error("no memory to hash a password");
    return hash.data();
}

bool IsHashOf(const std::string& hash, const Password& password) {
    const HashTurn turn;
    const std::string_view counted = password.Counted();
    return crypto_pwhash_str_verify(hash.c_str(), counted.data(), counted.size()) == 0;
}
