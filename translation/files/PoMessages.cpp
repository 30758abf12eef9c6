#include "files/PoMessages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace {

/* The library reads files only. This one is in memory. */
class MemoryFile {
public:
    explicit MemoryFile(const std::string& bytes) : file(memfd_create("po", MFD_CLOEXEC)) {
        if (file < 0) throw std::runtime_error("no file in memory can be made");
        for (std::string_view rest = bytes; !rest.empty();) {
            const ssize_t count = write(file, rest.data(), rest.size());
            if (count <= 0) throw std::runtime_error("a file in memory cannot be written");
            rest.remove_prefix(static_cast<size_t>(count));
        }
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(file); }

    [[nodiscard]] std::string Path() const { return "/proc/self/fd/" + std::to_string(file); }

private:
    int file;
};

/* Of the reading that goes on; the library's handlers know nothing but their arguments. */
Complaints* told = nullptr;

void Tell(int severity, size_t line, std::string sentence) {
    // The library must not go on then, and is C: an exception passes through it as through every function of
    // this platform, and leaves behind what the library holds.
    if (severity == PO_SEVERITY_FATAL_ERROR) throw std::runtime_error(sentence);
    if (severity == PO_SEVERITY_WARNING) return;
    const size_t knownLine = line == static_cast<size_t>(-1) ? 0 : line;
    if (!told->empty() && told->back().line == knownLine) return;
    while (sentence.ends_with('\n'))
        sentence.pop_back();
    Complain(*told, knownLine, std::move(sentence));
}

void TakeError(int severity, po_message_t /*message*/, const char* /*file*/, size_t line, size_t /*column*/,
               int /*hasManyLines*/, const char* sentence) {
    Tell(severity, line, sentence);
}

void TakeErrorOfTwo(int severity, po_message_t /*message*/, const char* /*file*/, size_t line,
                    size_t /*column*/, int /*hasManyLines*/, const char* sentence, po_message_t /*other*/,
                    const char* /*otherFile*/, size_t /*otherLine*/, size_t /*otherColumn*/,
                    int /*otherHasManyLines*/, const char* /*otherSentence*/) {
    Tell(severity, line, sentence);
}

constexpr po_xerror_handler handlers = {TakeError, TakeErrorOfTwo};

struct FileEnd {
    void operator()(po_file_t file) const { po_file_free(file); }
};

struct IteratorEnd {
    void operator()(po_message_iterator_t iterator) const { po_message_iterator_free(iterator); }
};

void HandOver(po_file_t file, const char* domain, const std::function<void(po_message_t message)>& take) {
    const std::unique_ptr<std::remove_pointer_t<po_message_iterator_t>, IteratorEnd> messages(
        po_message_iterator(file, domain));
    while (po_message_t message = po_next_message(messages.get()))
        take(message);
}

}  // namespace

void ReadPoMessages(const std::string& bytes, Complaints& complaints,
                    const std::function<void(po_message_t message)>& take) {
    const MemoryFile memory(bytes);
    Complaints found;
    told = &found;
    const std::unique_ptr<po_file, FileEnd> file(po_file_read(memory.Path().c_str(), &handlers));
    told = nullptr;
    if (!file) throw std::runtime_error("gettext cannot open a file in memory");
    for (const char* const* domain = po_file_domains(file.get()); *domain != nullptr; ++domain) {
        if (std::string_view(*domain) != "messages")
            Complain(found, 1,
                     std::string("the texts of the domain '") + *domain + "' are not for the library");
    }
    complaints.insert(complaints.end(), found.begin(), found.end());
    if (found.empty()) HandOver(file.get(), "messages", take);
}
