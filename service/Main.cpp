/* The reference service's program: command line, database, server, signals. */
#include <pthread.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <future>
#include <span>
#include <stdexcept>
#include <string>
#include <thread>

#include "AccountStore.h"
#include "HttpServer.h"
#include "LMOnlineVersion.h"
#include "Log.h"
#include "MadeUpMaps.h"
#include "MapCatalogue.h"
#include "MapFolder.h"
#include "Options.h"
#include "Seed.h"

namespace {

constexpr int badArguments = 2;
// How long connections may still finish after the signal to end.
constexpr std::chrono::seconds grace(1);

/* The signals that ask the service to end. */
sigset_t EndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

/* Waits for a signal, then stops the server. A client that keeps its connection open or never ends its
 * request could keep the process from ending: connections that are left after the grace are cut. An account
 * that is being added then is added whole or not at all, and its client gets no answer. */
void StopOnSignal(HttpServer& server, const std::future<void>& served) {
    const sigset_t signals = EndSignals();
    int received = 0;
    sigwait(&signals, &received);
    if (served.wait_for(std::chrono::seconds(0)) == std::future_status::ready) return;
    server.Stop();
    if (served.wait_for(grace) == std::future_status::ready) return;
    LogLine("connections that are still open are cut");
    _exit(0);
}

std::filesystem::path MapFolderOf(const Options& options) {
    return options.dataFolder / "maps";
}

void Serve(const Options& options, const MapCatalogue& catalogue, AccountStore& accounts) {
    // Blocked in this thread and in all that it starts: sigwait takes them.
    const sigset_t signals = EndSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    HttpServer server(options.server, catalogue, MapFolderOf(options), accounts);
    std::promise<void> promise;
    const std::future<void> served = promise.get_future();
    std::thread watcher;
    const bool wasStopped = server.Serve([&] {
        watcher = std::thread([&] { StopOnSignal(server, served); });
        std::printf("listening on port %d\n", server.Port());
        std::fflush(stdout);
    });
    promise.set_value();
    // Ends the watcher if it still waits for a signal.
    pthread_kill(watcher.native_handle(), SIGTERM);
    watcher.join();
    if (!wasStopped) throw std::runtime_error("the system took the port away");
}

int Run(std::span<const char* const> arguments) {
    const Options options = ParseOptions(arguments);
    if (options.help) {
        std::fputs(usage, stdout);
        return 0;
    }
    if (options.version) {
        std::printf("orvande-service %d.%d.%d\n", LM_ONLINE_VERSION_MAJOR, LM_ONLINE_VERSION_MINOR,
                    LM_ONLINE_VERSION_PATCH);
        return 0;
    }
    const MapCatalogue catalogue(options.dataFolder,
                                 options.madeUpMaps ? MadeUpMaps(*options.madeUpMaps) : RegionsOfTheWorld());
    if (!options.madeUpMaps) MakeMapFiles(MapFolderOf(options), FilesOfTheWorld());
    AccountStore accounts(options.dataFolder / MapCatalogue::fileName);
    Serve(options, catalogue, accounts);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(std::span<const char* const>(argv, static_cast<size_t>(argc)).subspan(1));
    } catch (const OptionError& error) {
        LogLine(std::string("orvande-service: ") + error.what());
        return badArguments;
    } catch (const std::exception& error) {
        LogLine(std::string("orvande-service: ") + error.what());
        return 1;
    }
}
