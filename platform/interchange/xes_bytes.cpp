#include "platform/interchange/xes_bytes.h"

#include <algorithm>
#include <array>
#include <zlib.h>

#include "platform/interchange/document_refused.h"

namespace mero {

struct XesBytes::Unpacker {
    Unpacker() {
        constexpr int GzipOnly = 16 + MAX_WBITS;
        if (inflateInit2(&state, GzipOnly) != Z_OK) {
            throw DocumentRefused("no memory to unpack the file");
        }
    }
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;
    ~Unpacker() { inflateEnd(&state); }

    z_stream state{};
    std::array<char, 1 << 16> packed{};
    bool betweenMembers = false;
};

XesBytes::XesBytes(std::istream& source) : input(source) {
    constexpr int FirstMark = 0x1F;
    if (input.peek() == FirstMark) {
        unpacker = std::make_unique<Unpacker>();
    }
}

XesBytes::~XesBytes() = default;

std::size_t XesBytes::read(char* target, std::size_t size) {
    return unpacker != nullptr ? readPacked(target, size) : readPlain(target, size);
}

std::size_t XesBytes::readPlain(char* target, std::size_t size) {
    input.read(target, static_cast<std::streamsize>(size));
    if (input.bad()) {
        throw DocumentRefused("the file can't be read");
    }
    return static_cast<std::size_t>(input.gcount());
}

std::size_t XesBytes::readPacked(char* target, std::size_t size) {
    z_stream& state = unpacker->state;
    state.next_out = reinterpret_cast<Bytef*>(target);
    state.avail_out = static_cast<uInt>(size);
    while (state.avail_out == size) {
        if (state.avail_in == 0) {
            state.next_in = reinterpret_cast<Bytef*>(unpacker->packed.data());
            state.avail_in = static_cast<uInt>(readPlain(unpacker->packed.data(), unpacker->packed.size()));
            if (state.avail_in == 0) {
                if (unpacker->betweenMembers) {
                    return 0;
                }
                throw DocumentRefused("the compressed file ends too early");
            }
        }
        if (unpacker->betweenMembers) {
            inflateReset(&state);
            unpacker->betweenMembers = false;
        }
        const int status = inflate(&state, Z_NO_FLUSH);
        unpacker->betweenMembers = status == Z_STREAM_END;
        if (status != Z_OK && status != Z_STREAM_END) {
            throw DocumentRefused("the compressed file is damaged");
        }
    }
    return size - state.avail_out;
}

}  // namespace mero
