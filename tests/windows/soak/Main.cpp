/* Works for tools/soak, in one process, as long as lines come:
 *
 *   orvande-soak library|bare PORT FOLDER
 *
 * PORT is the user's proxy, FOLDER an empty folder for files and settings. A line is an operation with its
 * words (Operations.h), and is answered by a line. Others are
 *
 *   reload        unloads and loads again
 *   sample        what the process holds: names and numbers
 *   plant KIND    from here on each operation leaves one of that kind behind
 *
 * The exit code is 0 at the end of the lines, 1 when something failed that has no place in an answer; the
 * last line tells what. */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <sstream>

#include "helpers/MovedFolder.h"
#include "helpers/WebProxy.h"
#include "helpers/Widened.h"
#include "soak/HeldFigures.h"
#include "soak/Operations.h"
#include "soak/PlantedLeak.h"

namespace {

std::string SampleText() {
    const HeldFigures held = CountHeld();
    std::ostringstream text;
    text << "handles " << held.handles << " graphics " << held.graphicsObjects << " windows "
         << held.windowObjects << " internet " << held.internetHandles << " blocks " << held.blocks
         << " blockbytes " << held.blockBytes << " privatebytes " << held.privateBytes;
    return text.str();
}

class Worker {
public:
    explicit Worker(std::unique_ptr<Operations> done) : operations(std::move(done)) {}

    std::string Answer(const std::string& name, const Words& words) {
        if (name == "sample") return SampleText();
        if (name == "plant") {
            planted = words.at(0);
            return "planted";
        }
        std::string answer = Do(name, words);
        LeaveBehind(planted);
        return answer;
    }

private:
    std::string Do(const std::string& name, const Words& words) {
        if (name == "search") return operations->Search(words);
        if (name == "download") return operations->Download(words);
        if (name == "range") return operations->ReadRange(words);
        if (name == "signin") return operations->SignIn(words);
        if (name == "create") return operations->Create(words);
        if (name != "reload") throw std::runtime_error("there is no operation '" + name + "'");
        operations->Reload();
        return "reloaded";
    }

    const std::unique_ptr<Operations> operations;
    std::string planted = "none";
};

void Say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

void Work(Worker& worker) {
    std::string line;
    while (std::getline(std::cin, line)) {
        std::istringstream rest(line);
        std::string name;
        rest >> name;
        Words words;
        for (std::string word; rest >> word;)
            words.push_back(word);
        Say(worker.Answer(name, words));
    }
}

}  // namespace

int main(int argc, char** argv) {
    // What goes wrong with the user of a dialog ends the program.
    testing::GTEST_FLAG(throw_on_failure) = true;
    testing::InitGoogleTest(&argc, argv);
    const Words arguments(argv + std::min(argc, 1), argv + argc);
    if (arguments.size() != 3) return 2;
    try {
        const std::wstring folder = Widened(arguments[2]);
        const MovedFolder settings(L"AppData", folder);
        const MovedFolder documents(L"Personal", folder);
        const WebProxy proxy(static_cast<uint16_t>(std::stoul(arguments[1])));
        Worker worker(arguments[0] == "bare" ? BareOperations(folder) : LibraryOperations(folder));
        Work(worker);
    } catch (const std::exception& failure) {
        Say(std::string("failed: ") + failure.what());
        return 1;
    }
    return 0;
}
