/* The handles that the machine gives out: each value once in the life of the process, so that a stale one is
 * always recognised. */
#pragma once

#include "Platform.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "machine/Call.h"

namespace simulator {

/* What a handle stands for. */
struct Object {
    explicit Object(const char* kindName) : kind(kindName) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    const char* const kind;  // as the journal names it: "session", ...
    std::string name;        // kind and, while the journal is written, number
    Object* parent = nullptr;
    size_t children = 0;
    bool isEarlier = false;    // open since before the test
    bool mayStayOpen = false;  // no leak
};

class Handles {
public:
    static Handles& Current();

    /* Gives the object a name and a handle. A parent must be open. */
    void* Open(std::unique_ptr<Object> object, Object* parent = nullptr);

    /* The open object of that type, or null. A handle that is neither null nor such an object is a violation.
     */
    template <class Type>
    Type* Find(void* handle, const Call& call) {
        auto* object = dynamic_cast<Type*>(Lookup(handle));
        if (object == nullptr && handle != nullptr) ReportWrong(handle, call);
        return object;
    }

    /* The object behind any open handle, or null. */
    Object* Lookup(void* handle) const;

    void Close(void* handle);

    /* How the journal names the handle: its name, null, or what is wrong with it. */
    std::string NameOf(const void* handle) const;

    /* Whether the handle is open, or was in this test. */
    bool IsKnown(const void* handle) const;

    /* Shows every open handle with its object. */
    template <class Visitor>
    void ForEach(const Visitor& visitor) const {
        for (const auto& [handle, object] : open_)
            visitor(handle, *object);
    }

    /* All that is open becomes "earlier", the numbers begin at 1 again. */
    void BeginTest();

    /* The names of what was opened since BeginTest and is still open. Closes it. */
    std::vector<std::string> CloseLeaks();

    /* Closes what was opened since BeginTest, also what may stay open. */
    void CloseOpened();

private:
    void ForgetParent(const Object& parent);
    void ReportWrong(void* handle, const Call& call) const;

    std::map<void*, std::unique_ptr<Object>> open_;
    std::map<void*, std::string> closed_;  // the names of those that were closed in this test
    std::map<std::string, size_t> numbers_;
    uintptr_t next_ = 0x00CC0000;
};

}  // namespace simulator
