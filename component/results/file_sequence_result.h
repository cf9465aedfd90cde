#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "component/results/sequence_result.h"

/// A history in a text file: comment lines, each beginning with "# ", then a line "id; time; value; name" for
/// each reading in the order of writing, always with a decimal point. The name is for human readers and isn't
/// read back.
class MeroFileSequenceResult : public MeroSequenceResult {
public:
    /// Opens nothing. `name` is given to the C runtime as it stands.
    MeroFileSequenceResult(MeroId object, MeroId key, SV::String name);
    ~MeroFileSequenceResult() override;

    [[nodiscard]] bool isWriting() const override { return writing; }
    /// Makes the file anew and writes the header. A box tells of a failure.
    bool openForWriting(const SV::String& header) override;
    bool closeForReading() override;
    /// A box tells of a failure.
    bool reopenForAppend() override;
    /// A box tells of a failure.
    bool addEntry(double value, double time, MeroId measuredObject) override;
    /// A file can't be read while it is being written. A box tells of a failing read.
    bool getNext(MeroSequenceEntry& entry) override;
    void rewind() override;

private:
    struct FileCloser {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };

    /// Box of a failure: the message, the file's name and `endOfBox`.
    bool openToWrite(const char* mode, const char* endOfBox);
    /// False, and a box unless one has told of it, if not all could be written.
    bool closeWritten();
    [[nodiscard]] const SV::String& nameOf(MeroId measuredObject);

    std::unique_ptr<std::FILE, FileCloser> file;
    SV::String fileName;
    bool writing = false;
    bool readable = false;
    bool writeFailed = false;
    MeroKeyedTable<MeroId, SV::String> names;  ///< of objects, read once
    std::string line;                          ///< written or read, kept for its memory
};
