/* Take the place of what would keep a target from its runs: libsodium's hash, which is costly on purpose, and
 * the log, which has a line for each of them. */
#include <sodium.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "Log.h"

int crypto_pwhash_str(char out[crypto_pwhash_STRBYTES], const char* const password, unsigned long long size,
                      unsigned long long /*passes*/, size_t /*memory*/) {
    const size_t kept = std::min<size_t>(size, crypto_pwhash_STRBYTES - 2);
    std::fill_n(out, crypto_pwhash_STRBYTES, '\0');
    out[0] = '$';
    std::copy_n(password, kept, out + 1);
    return 0;
}

int crypto_pwhash_str_verify(const char* hash, const char* const password, unsigned long long size) {
    return std::string_view(hash).substr(1) == std::string_view(password, size) ? 0 : -1;
}

void LogLine(std::string_view /*text*/) {}
