#include "Platform.h"

#include "modules/ResourceFile.h"

#include <fstream>
#include <iterator>

#include "machine/Allocations.h"
#include "machine/Violations.h"
#include "modules/Reader.h"

namespace {

using simulator::Reader;

constexpr uint16_t numberFollows = 0xFFFF;

ResourceId ReadId(Reader& reader) {
    const uint16_t first = reader.Word();
    if (first == numberFollows) return {reader.Word(), {}};
    if (first == 0) return {};
    return {0, static_cast<char16_t>(first) + reader.Text()};
}

/* One resource; nothing when it is not whole. */
std::optional<Resource> ReadResource(Reader& reader) {
    const size_t start = reader.Position();
    const uint32_t dataSize = reader.Double();
    const uint32_t headerSize = reader.Double();
    Resource resource;
    resource.type = ReadId(reader);
    resource.name = ReadId(reader);
    reader.Align();
    reader.Double();  // version of the data
    reader.Word();    // memory flags
    resource.language = reader.Word();
    reader.Double();  // version
    reader.Double();  // characteristics
    if (!reader.IsGood() || reader.Position() - start != headerSize) return std::nullopt;
    resource.bytes = reader.Bytes(dataSize);
    reader.Align();
    if (!reader.IsGood()) return std::nullopt;
    return resource;
}

}  // namespace

std::optional<std::vector<Resource>> ParseResourceFile(std::string_view bytes) {
    const simulator::OwnWork ownWork;
    Reader reader(bytes);
    // The first one is empty and tells that the file is of the 32-bit kind.
    const auto first = ReadResource(reader);
    if (!first || !first->bytes.empty() || !(first->type == ResourceId{})) return std::nullopt;
    std::vector<Resource> resources;
    while (!reader.IsAtEnd()) {
        auto resource = ReadResource(reader);
        if (!resource) return std::nullopt;
        resources.push_back(*std::move(resource));
    }
    return resources;
}

std::vector<Resource> ReadResourceFile(const std::string& file) {
    const simulator::OwnWork ownWork;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    auto resources = ParseResourceFile(bytes);
    if (resources) return *std::move(resources);
    simulator::Violate(file + " is no compiled resource file");
    return {};
}
