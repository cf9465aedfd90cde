#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "component/host/sv_boxes.h"

#include "component/results/file_sequence_result.h"
#include "fuzz/fuzz_input.h"
#include "platform/interchange/history_file.h"
#include "platform/toolkit/internal_errors.h"

namespace {

/// The agents' own reader works on files.
void readAsAgent(std::string_view text) {
    static const std::string path =
        (std::filesystem::temp_directory_path() / ("mero-fuzz-history-" + std::to_string(getpid()))).string();
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
    MeroFileSequenceResult history(1, 1, SV::String(path));
    MeroSequenceEntry entry;
    std::size_t readings = 0;
    while (history.getNext(entry)) {
        require(++readings <= text.size(), "a pass ends");
    }
    SV::BoxDesk::GetGlobal().clearRecords();
    mero::InternalErrorLog::GetGlobal().clear();
    std::filesystem::remove(path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    requireReason(mero::readHistoryFile(asText(data, size), "fuzz.txt"));
    readAsAgent(asText(data, size));
    return 0;
}
