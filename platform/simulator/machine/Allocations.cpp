#include "Platform.h"

#include "machine/Allocations.h"

#include <new>
#include <utility>

#include "machine/AllocationWatch.h"
#include "machine/LimitedHeap.h"
#include "machine/Violations.h"

namespace {

struct Gate {
    bool watching = false;
    int ownWork = 0;
    size_t count = 0;
    size_t firstRefused = 0;  // 0: none
    bool refusesAllFromThere = false;
    bool refused = false;
};

// Constant-initialised and trivially destroyed: operator new is called before main and after it.
thread_local constinit Gate gate;

// Of the last watch: its number, and its blocks that have not been given back.
constinit size_t lastWatch = 0;
constinit size_t blocksLeft = 0;

/* The gate without a watch. The simulator may be at work: a script of a user may hold a watch. */
void Open() {
    const int ownWork = gate.ownWork;
    gate = Gate{};
    gate.ownWork = ownWork;
}

bool IsRefusedByWatch() noexcept {
    if (!gate.watching || gate.ownWork > 0) return false;
    ++gate.count;
    if (gate.firstRefused == 0 || gate.count < gate.firstRefused) return false;
    if (gate.count > gate.firstRefused && !gate.refusesAllFromThere) return false;
    gate.refused = true;
    return true;
}

}  // namespace

namespace simulator {

bool AllocationIsRefused(size_t size) noexcept {
    return IsRefusedByWatch() || LimitedHeap::Refuses(size);
}

bool IsOwnWork() noexcept {
    return gate.ownWork > 0;
}

size_t NoteBlock() noexcept {
    if (!gate.watching || gate.ownWork > 0) return 0;
    ++blocksLeft;
    return lastWatch;
}

void ForgetBlock(size_t watch) noexcept {
    if (watch != 0 && watch == lastWatch) --blocksLeft;
}

bool HasMemoryFailed() noexcept {
    return gate.refused;
}

OwnWork::OwnWork() noexcept {
    ++gate.ownWork;
}

OwnWork::~OwnWork() {
    --gate.ownWork;
}

LibraryWork::LibraryWork() noexcept : suspended_(std::exchange(gate.ownWork, 0)) {}

LibraryWork::~LibraryWork() {
    gate.ownWork = suspended_;
}

}  // namespace simulator

void AllocationWatch::Start() {
    if (gate.watching) {
        const simulator::OwnWork ownWork;
        simulator::Violate("an AllocationWatch begins while another one is on");
        return;
    }
    Open();
    ++lastWatch;
    blocksLeft = 0;
    gate.watching = true;
    {
        const simulator::LibraryWork libraryWork;
        ::operator delete(::operator new(1));
    }
    const bool counts = gate.count == 1;
    Open();
    if (!counts) {
        simulator::Violate("AllocationWatch counts nothing: the program does not link simulator_allocations");
        return;
    }
    running_ = true;
}

AllocationWatch::AllocationWatch() : AllocationWatch(0) {}

AllocationWatch::AllocationWatch(size_t n, Failing failing) {
    Start();
    if (!running_) return;
    gate.firstRefused = n;
    gate.refusesAllFromThere = failing == Failing::FromThereOn;
    gate.watching = true;
}

AllocationWatch::~AllocationWatch() {
    Stop();
}

size_t AllocationWatch::Count() const {
    return running_ ? gate.count : count_;
}

bool AllocationWatch::Failed() const {
    return running_ ? gate.refused : failed_;
}

size_t AllocationWatch::BlocksLeft() {
    return blocksLeft;
}

void AllocationWatch::Stop() {
    if (!running_) return;
    running_ = false;
    count_ = gate.count;
    failed_ = gate.refused;
    Open();
}
