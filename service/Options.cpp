#include "Options.h"

#include <charconv>
#include <string>
#include <string_view>

#include "MadeUpMaps.h"

const char* const usage =
    "Usage: orvande-service --port N --data DIR [OPTION ...]\n"
    "\n"
    "Serves the Orvande map shop over HTTP until it gets SIGTERM or SIGINT.\n"
    "\n"
    "  --port N            the port to listen on; 0 takes a free one. Standard output\n"
    "                      says 'listening on port N' when the service is ready\n"
    "  --data DIR          the folder of its database and of its map files; made and\n"
    "                      filled when missing\n"
    "  --address A         the numeric address to listen on (default 127.0.0.1)\n"
    "  --made-up COUNT     a catalogue of 0 to 1000000 made-up maps in place of the\n"
    "                      regions of the world\n"
    "  --certificate FILE  serve HTTPS with this certificate chain (PEM) ...\n"
    "  --private-key FILE  ... and its private key (PEM)\n"
    "  --version           say which version this is\n"
    "  --help              say this\n";

namespace {

const std::string& TextIn(const std::string& option, const std::string& value) {
    if (value.empty()) throw OptionError(option + " needs a value");
    return value;
}

int32_t NumberUpTo(int32_t most, const std::string& option, const std::string& value) {
    const std::string_view text = TextIn(option, value);
    int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || number < 0 || number > most) {
        throw OptionError(option + " takes a number from 0 to " + std::to_string(most) + ", not '" +
                          std::string(text) + "'");
    }
    return number;
}

void Take(Options& options, const std::string& option, const std::string& value) {
    if (option == "--port") {
        options.server.port = NumberUpTo(65535, option, value);
    } else if (option == "--data") {
        options.dataFolder = TextIn(option, value);
    } else if (option == "--address") {
        options.server.address = TextIn(option, value);
    } else if (option == "--made-up") {
        options.madeUpMaps = NumberUpTo(mostMadeUpMaps, option, value);
    } else if (option == "--certificate") {
        options.server.certificate = TextIn(option, value);
    } else if (option == "--private-key") {
        options.server.privateKey = TextIn(option, value);
    } else {
        throw OptionError("unknown argument '" + option + "'; --help lists those there are");
    }
}

}  // namespace

Options ParseOptions(std::span<const char* const> arguments) {
    Options options;
    bool hasPort = false;
    for (size_t index = 0; index < arguments.size(); index += 2) {
        const std::string option = arguments[index];
        options.help = option == "--help";
        options.version = option == "--version";
        if (options.help || options.version) return options;
        const std::string value = index + 1 < arguments.size() ? arguments[index + 1] : "";
        Take(options, option, value);
        hasPort = hasPort || option == "--port";
    }
    if (!hasPort) throw OptionError("--port is missing; --help tells how to call this service");
    if (options.dataFolder.empty())
        throw OptionError("--data is missing; --help tells how to call this service");
    if (options.server.certificate.empty() != options.server.privateKey.empty()) {
        throw OptionError("--certificate and --private-key go together");
    }
    return options;
}
