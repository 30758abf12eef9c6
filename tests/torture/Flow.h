/* A flow: something that an application does with the library from beginning to end, to be run with every
 * failure that the platform can bring. */
#pragma once

#include "Device.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/* The error of every call that is made to fail. It is a failure as an HRESULT, too, and no code of anything.
 * Outcomes show it as E. */
inline constexpr DWORD orderedError = 0xA0001234;

class Flow {
public:
    Flow() = default;
    Flow(const Flow&) = delete;
    Flow& operator=(const Flow&) = delete;
    virtual ~Flow() = default;

    /* What is there before, and stays: hosts, registry values. Once, on a new machine. */
    virtual void SetUp() {}

    /* Before each run: the files as it is to find them, what the user will do. */
    virtual void Prepare() {}

    /* The calls under test, and nothing of its own that allocates or can fail. */
    virtual void Run() = 0;

    /* What has come of the run, in the words of the statements. */
    virtual std::string Outcome() = 0;

    /* Gives back what the run has left to the application. */
    virtual void CleanUp() {}

protected:
    /* As outcomes show a last error. */
    static std::string ErrorText(DWORD error);

    Device& device = Device::Current();
};

/* What may come of a failure. `failure` is the name of a function that fails, "memory" for an allocation, or
 * one of these and which call or allocation of the run it is: "HttpQueryInfoW 2". The more exact one counts.
 * A failure without a statement changes nothing: the outcome is that without failures.
 *
 * When several calls fail, the first failure with a statement decides; of a call and an allocation either
 * may. An outcome that begins with "+" may come only then, and "..." says that the flow goes on, so that what
 * fails later may decide as well. A "*" stands for any text. */
struct Statement {
    std::string_view failure;
    std::vector<std::string_view> outcomes;
};

/* Which library is there when a run begins. */
enum class Library { None, Online, Account };

/* A row of the table. */
struct FlowRow {
    std::string name;
    Library library;
    std::function<std::unique_ptr<Flow>()> make;
    std::string_view success;  // the outcome without failures
    std::vector<Statement> statements;
    // The boxes that may come of failures; "*" as above. Without any, boxes are part of the outcome.
    std::vector<std::string_view> boxes = {};
    std::vector<std::string_view> sparedCalls = {};  // that are counted, but not made to fail
};

/* The rows of this program. */
std::vector<FlowRow> AllRows();

/* The rows of a subject; a program has those whose library it has. */
std::vector<FlowRow> SearchRows();
std::vector<FlowRow> DownloadRows();
std::vector<FlowRow> CompanionRows();
std::vector<FlowRow> CompanionDialogRows();
std::vector<FlowRow> SecureRows();
std::vector<FlowRow> RefusedAccountRows();
std::vector<FlowRow> DialogRows();
std::vector<FlowRow> MessageRows();
std::vector<FlowRow> FileRows();

/* Those of loading a library's file, whose name on the device is `name`. */
struct LoadedFile {
    std::string rowNames;  // what the rows' names begin with
    std::u16string name;
    std::string file;
};
std::vector<FlowRow> LoadRows(const LoadedFile& loaded);

/* A row for a flow of that class, made with those arguments. */
template <class FlowClass, class... Arguments>
std::function<std::unique_ptr<Flow>()> Make(Arguments... arguments) {
    return [=] { return std::make_unique<FlowClass>(arguments...); };
}

/* The library as a new process finds it: loaded, with nothing done yet; and its end. */
void BeginLibrary(Library library);
void EndLibrary(Library library);
