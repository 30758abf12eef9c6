/* orvande-device-tests [--checked-images=FOLDER]: the tests, with the images that devices get, or with those
 * of the preset device-checked. */
#include <gmock/gmock.h>

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string_view>

#include "ImageFiles.h"

namespace {

/* The trap of a checked image. Only the system is called: anything may be going on. */
void TellOfTrap(int signal) {
    constexpr std::string_view text =
        "an image has stopped: it uses an address that is not aligned (tools/debug shows where)\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace

int main(int count, char** values) {
    testing::InitGoogleMock(&count, values);
    constexpr std::string_view option = "--checked-images=";
    for (int i = 1; i < count; ++i) {
        const std::string_view value = values[i];
        if (!value.starts_with(option) || value == option) {
            std::fprintf(stderr, "%s: unknown argument '%s'\n", values[0], values[i]);
            return 2;
        }
        UseCheckedImages(std::string(value.substr(option.size())));
    }
    std::signal(SIGILL, TellOfTrap);
    return RUN_ALL_TESTS();
}
