#include "machine/Handles.h"

#include <algorithm>

#include "machine/Journal.h"
#include "machine/Text.h"

namespace simulator {

Handles& Handles::Current() {
    static Handles& handles = *new Handles;
    return handles;
}

void* Handles::Open(std::unique_ptr<Object> object, Object* parent) {
    next_ += 0x10;
    void* const handle = reinterpret_cast<void*>(next_);
    object->name = object->kind;
    if (Journal::Current().IsWritten()) object->name += " " + std::to_string(++numbers_[object->kind]);
    object->parent = parent;
    if (parent != nullptr) ++parent->children;
    open_.emplace(handle, std::move(object));
    return handle;
}

Object* Handles::Lookup(void* handle) const {
    const auto found = open_.find(handle);
    return found != open_.end() ? found->second.get() : nullptr;
}

void Handles::Close(void* handle) {
    const auto found = open_.find(handle);
    if (found == open_.end()) return;
    const Object& object = *found->second;
    if (object.parent != nullptr) --object.parent->children;
    closed_[handle] = object.name;
    if (object.children > 0) ForgetParent(object);
    open_.erase(found);
}

// Children that outlive their parent are a violation of their own.
void Handles::ForgetParent(const Object& parent) {
    for (const auto& [handle, object] : open_) {
        if (object->parent == &parent) object->parent = nullptr;
    }
}

std::string Handles::NameOf(const void* handle) const {
    if (!Journal::Current().IsWritten()) return "a handle";
    if (handle == nullptr) return "null";
    void* const key = const_cast<void*>(handle);
    if (const Object* object = Lookup(key)) return object->name;
    const auto found = closed_.find(key);
    return found != closed_.end() ? "closed " + found->second : "unknown handle " + PointerText(handle);
}

bool Handles::IsKnown(const void* handle) const {
    void* const key = const_cast<void*>(handle);
    return Lookup(key) != nullptr || closed_.contains(key);
}

void Handles::ReportWrong(void* handle, const Call& call) const {
    call.Violates(NameOf(handle) + (Lookup(handle) != nullptr ? " is of the wrong kind" : " is not open"));
}

void Handles::BeginTest() {
    closed_.clear();
    numbers_.clear();
    for (const auto& [handle, object] : open_) {
        object->isEarlier = true;
        object->name =
            std::string("earlier ") + object->kind + " " + std::to_string(++numbers_[object->kind]);
    }
    numbers_.clear();
}

std::vector<std::string> Handles::CloseLeaks() {
    std::vector<void*> leaks;
    for (const auto& [handle, object] : open_) {
        if (!object->isEarlier && !object->mayStayOpen) leaks.push_back(handle);
    }
    std::vector<std::string> names;
    for (void* handle : leaks) {
        names.push_back(open_.at(handle)->name);
        Close(handle);
    }
    return names;
}

void Handles::CloseOpened() {
    std::vector<void*> opened;
    for (const auto& [handle, object] : open_) {
        if (!object->isEarlier) opened.push_back(handle);
    }
    for (void* handle : opened)
        Close(handle);
}

}  // namespace simulator
