#include "platform/interchange/xes_rows.h"

#include <algorithm>

#include "platform/interchange/document_refused.h"

namespace mero {

namespace {

constexpr std::uint64_t RowsOfBuffer = 4096;

void require(bool done) {
    if (!done) {
        throw DocumentRefused("the temporary file for sorting events can't be used");
    }
}

}  // namespace

void XesRowSorter::add(const XesRow& row) {
    if (memory.size() == limit) {
        writeRun();
    }
    memory.push_back(row);
    ++rowCount;
}

void XesRowSorter::writeRun() {
    std::sort(memory.begin(), memory.end());
    if (file == nullptr) {
        file.reset(std::tmpfile());
        require(file != nullptr);
    }
    Run run;
    run.begin = runs.empty() ? 0 : runs.back().end;
    run.end = run.begin + memory.size();
    require(std::fwrite(memory.data(), sizeof(XesRow), memory.size(), file.get()) == memory.size());
    runs.push_back(std::move(run));
    memory.clear();
}

void XesRowSorter::finish() {
    if (runs.empty()) {
        std::sort(memory.begin(), memory.end());
        return;
    }
    writeRun();
    memory.shrink_to_fit();
    require(std::fflush(file.get()) == 0);
    for (std::size_t run = 0; run < runs.size(); ++run) {
        if (refill(runs[run])) {
            orderHeap(run);
        }
    }
}

bool XesRowSorter::next(XesRow& row) {
    if (runs.empty()) {
        if (position == memory.size()) {
            return false;
        }
        row = memory[position++];
        return true;
    }
    if (heap.empty()) {
        return false;
    }
    const auto isLater = [this](std::size_t left, std::size_t right) {
        return runs[right].rows[runs[right].position] < runs[left].rows[runs[left].position];
    };
    std::pop_heap(heap.begin(), heap.end(), isLater);
    const std::size_t index = heap.back();
    heap.pop_back();
    Run& run = runs[index];
    row = run.rows[run.position++];
    if (run.position < run.rows.size() || refill(run)) {
        orderHeap(index);
    }
    return true;
}

bool XesRowSorter::refill(Run& run) {
    const auto count = static_cast<std::size_t>(std::min(RowsOfBuffer, run.end - run.begin));
    run.rows.resize(count);
    run.position = 0;
    if (count == 0) {
        return false;
    }
    require(fseeko(file.get(), static_cast<off_t>(run.begin * sizeof(XesRow)), SEEK_SET) == 0);
    require(std::fread(run.rows.data(), sizeof(XesRow), count, file.get()) == count);
    run.begin += count;
    return true;
}

void XesRowSorter::orderHeap(std::size_t run) {
    heap.push_back(run);
    std::push_heap(heap.begin(), heap.end(), [this](std::size_t left, std::size_t right) {
        return runs[right].rows[runs[right].position] < runs[left].rows[runs[left].position];
    });
}

}  // namespace mero
