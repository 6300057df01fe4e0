// What the fuzz targets share: a promise that aborts, and input that is cut into parts.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace varlo::fuzz {

// A broken promise ends the run, so that the input is saved.
inline void Require(bool promise, const char *words) {
    if (promise)
        return;
    std::fprintf(stderr, "broken promise: %s\n", words);
    std::abort();
}

// Cuts an input into numbers and chunks; an input that is too short gives zeros and short chunks.
class Input {
public:
    Input(const uint8_t *data, size_t size) : bytes_(reinterpret_cast<const char *>(data), qsizetype(size)) {}

    bool AtEnd() const { return at_ >= bytes_.size(); }
    int Byte() { return AtEnd() ? 0 : static_cast<uint8_t>(bytes_[at_++]); }
    QByteArray Chunk(qsizetype size) {
        const QByteArray chunk = bytes_.mid(at_, size);
        at_ += chunk.size();
        return chunk;
    }
    // Up to the next line feed, which is taken away, too.
    QByteArray Line() {
        const qsizetype end = bytes_.indexOf('\n', at_);
        const QByteArray line = Chunk(end < 0 ? bytes_.size() : end - at_);
        at_ += end < 0 ? 0 : 1;
        return line;
    }
    const QByteArray &All() const { return bytes_; }
    QByteArray Rest() { return Chunk(bytes_.size()); }

private:
    QByteArray bytes_;
    qsizetype at_ = 0;
};

} // namespace varlo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
