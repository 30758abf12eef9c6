#include "Platform.h"

#include "machine/LimitedHeap.h"

#include <algorithm>
#include <new>

#include "machine/Allocations.h"
#include "machine/Violations.h"

namespace {

// Constant-initialised: operator new is called before main and after it.
thread_local constinit LimitedHeap* current = nullptr;
thread_local constinit bool isAtWork = false;

/* While one exists, what is allocated and freed belongs to the table of blocks. */
class TableWork {
public:
    TableWork() noexcept { isAtWork = true; }
    TableWork(const TableWork&) = delete;
    TableWork& operator=(const TableWork&) = delete;
    ~TableWork() { isAtWork = false; }

private:
    simulator::OwnWork ownWork_;
};

}  // namespace

LimitedHeap::LimitedHeap(size_t room) : room_(room) {
    if (current != nullptr) {
        simulator::Violate("a LimitedHeap begins while another one is there");
        return;
    }
    current = this;
    ::operator delete(::operator new(0, std::nothrow));
    if (peak_ == 0 && refusals_ == 0)
        simulator::Violate("LimitedHeap counts nothing: the program does not link simulator_allocations");
    peak_ = 0;
    refusals_ = 0;
}

LimitedHeap::~LimitedHeap() {
    if (current == this) current = nullptr;
}

bool LimitedHeap::Take(size_t size) {
    if (!HasRoom(size)) return false;
    Add(size + bookkeeping);
    return true;
}

void LimitedHeap::GiveBack(size_t size) {
    used_ -= size + bookkeeping;
}

bool LimitedHeap::Refuses(size_t size) noexcept {
    return current != nullptr && !simulator::IsOwnWork() && !current->HasRoom(size);
}

void LimitedHeap::NoteAllocated(const void* block, size_t size) noexcept {
    if (current == nullptr || simulator::IsOwnWork()) return;
    const TableWork work;
    current->blocks_.emplace(block, size + bookkeeping);
    current->Add(size + bookkeeping);
}

void LimitedHeap::NoteFreed(const void* block) noexcept {
    if (current == nullptr || isAtWork) return;
    const TableWork work;
    const auto found = current->blocks_.find(block);
    if (found == current->blocks_.end()) return;
    current->used_ -= found->second;
    current->blocks_.erase(found);
}

bool LimitedHeap::HasRoom(size_t size) noexcept {
    if (Free() >= bookkeeping && Free() - bookkeeping >= size) return true;
    ++refusals_;
    return false;
}

void LimitedHeap::Add(size_t taken) noexcept {
    used_ += taken;
    peak_ = std::max(peak_, used_);
}
