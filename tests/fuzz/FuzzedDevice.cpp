#include "FuzzedDevice.h"

#include <cstdio>
#include <memory>
#include <vector>

#include "FuzzTarget.h"
#include "machine/Handles.h"
#include "machine/Journal.h"
#include "network/ConnectionManager.h"
#include "network/Web.h"
#include "screen/Screen.h"
#include "storage/Storage.h"
#include "transport/NetworkConnection.h"
#include "user/ModalDialogs.h"
#include "user/Scripts.h"
#include "user/User.h"

namespace {

using simulator::Handles;

/* The data connections of a run, which the machine would remember for ever. */
void ForgetConnections() {
    std::vector<void*> opened;
    Handles::Current().ForEach([&opened](void* handle, const simulator::Object& object) {
        if (!object.isEarlier) opened.push_back(handle);
    });
    for (void* const handle : opened)
        Handles::Current().Close(handle);
    managedConnection = nullptr;
}

void ResetUser() {
    simulator::ResetDialogs();
    simulator::ResetScripts();
    simulator::ResetUser();
}

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};
using HostFile = std::unique_ptr<FILE, CloseFile>;

}  // namespace

FuzzedDevice::FuzzedDevice() {
    device.SetViolationHook([](const std::string& what) { Require(false, what.c_str()); });
    device.BeginTest();
    simulator::Journal::Current().SetWritten(false);
}

FuzzedDevice::~FuzzedDevice() {
    simulator::Journal::Current().SetWritten(true);
    device.EndTest();
    device.SetViolationHook(nullptr);
}

void FuzzedDevice::BeginRun() {
    simulator::ResetConnectionManager();
    Handles::Current().BeginTest();
    simulator::Journal::Current().Clear();
    SetLastError(ERROR_SUCCESS);
}

void FuzzedDevice::EndRun() {
    simulator::ReportOpenFiles();
    simulator::Screen::Current().EndTest();
    for (const std::string& name : Handles::Current().CloseLeaks())
        Require(false, (name + " is closed when a call is over").c_str());
    ForgetConnections();
    simulator::ReportUser();
    simulator::ReportScripts();
    ResetUser();
    simulator::ResetWeb();
}

FuzzedFile::FuzzedFile(std::u16string_view devicePath)
    : path(devicePath), place(Device::Current().HostPath(devicePath)) {}

void FuzzedFile::Put(std::string_view bytes) const {
    const HostFile file(std::fopen(place.c_str(), "wb"));
    Require(file != nullptr, "the target can write its files");
    Require(std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size(),
            "there is room for files");
}

std::string FuzzedFile::Take() const {
    const HostFile file(std::fopen(place.c_str(), "rb"));
    Require(file != nullptr, "the file has been written");
    std::string bytes;
    char block[4096];
    for (size_t count = 0; (count = std::fread(block, 1, sizeof block, file.get())) > 0;)
        bytes.append(block, count);
    return bytes;
}

void FuzzedFile::Remove() const {
    std::remove(place.c_str());
}
