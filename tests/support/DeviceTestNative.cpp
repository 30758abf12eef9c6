/* The machine under a test in the native ring: a simulated handheld, new for every test. */
#include "Platform.h"

#include "DeviceTest.h"

#include "Device.h"

namespace {

constexpr WideStringView testFolder = TEXT("\\Storage\\Test");

void ReportFailure(const std::string& what) {
    ADD_FAILURE() << what;
}

}  // namespace

void DeviceTest::SetUp() {
    Device::Current().SetViolationHook(ReportFailure);
    Device::Current().BeginTest();
    Device::Current().MakeFolder(testFolder);
}

void DeviceTest::TearDown() {
    Device::Current().EndTest();
    Device::Current().SetViolationHook(nullptr);
}

WideString DeviceTest::PathOf(WideStringView name) {
    return WideString(testFolder) + TEXT("\\") + WideString(name);
}

void DeviceTest::PutFile(const WideString& path, std::string_view bytes) {
    Device::Current().PutFile(path, bytes);
}

std::optional<std::string> DeviceTest::TakeFile(const WideString& path) {
    return Device::Current().TakeFile(path);
}

void DeviceTest::MakeFolder(const WideString& path) {
    Device::Current().MakeFolder(path);
}

void DeviceTest::SetRegistryValue(HKEY root, const WCHAR* key, const WCHAR* name, DWORD type,
                                  std::string_view bytes) {
    Device::Current().SetRegistryValue(root, key, name, type, bytes);
}

std::string DeviceTest::BytesOf(WideStringView text) {
    std::string bytes;
    for (const WCHAR unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}
