/* The values of a request body, read one after another. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/* The most code units that a string may announce. */
constexpr int32_t mostStringUnits = 100000;

/* A string as it lies in a body; the body must outlive it. Nothing is copied until Text. */
class WireString {
public:
    WireString() = default;
    explicit WireString(std::string_view bytesOfUnits) : bytes(bytesOfUnits) {}

    /* In UTF-16 code units. */
    [[nodiscard]] size_t Size() const { return bytes.size() / 2; }

    /* `index` must be below Size(). */
    [[nodiscard]] char16_t operator[](size_t index) const;

    /* The units, whatever they hold: they need not be well-formed. */
    [[nodiscard]] std::u16string Text() const;

private:
    std::string_view bytes;
};

/* Reading a value of which not all bytes are left gives none, and takes no bytes. */
class WireReader {
public:
    /* `bytes` is not copied: it must outlive the reader. */
    explicit WireReader(std::string_view bytes) : rest(bytes) {}

    std::optional<uint8_t> ReadByte();

    /* Little-endian. */
    std::optional<int32_t> ReadInt32();

    /* None, too, when it announces a negative number of units or more than mostStringUnits. */
    std::optional<WireString> ReadString();

    /* How many bytes are left. */
    [[nodiscard]] size_t Remaining() const { return rest.size(); }

private:
    std::string_view rest;
};
