#pragma once

#include <cstddef>
#include <istream>
#include <memory>

namespace mero {

/// The bytes of a stream, unpacked where they are gzip (RFC 1952), told by the first two bytes; several
/// members one after the other are one text.
class XesBytes {
public:
    explicit XesBytes(std::istream& source);
    XesBytes(const XesBytes&) = delete;
    XesBytes& operator=(const XesBytes&) = delete;
    ~XesBytes();

    /// Number of bytes set, 0 at the end. Throws `DocumentRefused` where the stream can't be read or
    /// unpacked.
    std::size_t read(char* target, std::size_t size);

private:
    struct Unpacker;

    std::size_t readPacked(char* target, std::size_t size);
    std::size_t readPlain(char* target, std::size_t size);

    std::istream& input;
    std::unique_ptr<Unpacker> unpacker;
};

}  // namespace mero
