#include "component/results/file_sequence_result.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>

#include "component/host/sv_boxes.h"

#include "platform/repository/repository.h"
#include "platform/repository/repository_services.h"
#include "platform/toolkit/internal_errors.h"

namespace {

class FileSequenceResult : public testing::Test {
protected:
    void SetUp() override {
        path = std::filesystem::temp_directory_path() /
               ("mero_history_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove(path);
        SV::BoxDesk::GetGlobal().clearRecords();
        mero::InternalErrorLog::GetGlobal().clear();
    }
    void TearDown() override { std::filesystem::remove(path); }

    [[nodiscard]] MeroFileSequenceResult make() const { return {1, 1, SV::String(path.string())}; }
    [[nodiscard]] std::string content() const {
        std::ifstream file(path);
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }
    void write(const std::string& text) const { std::ofstream(path) << text; }
    static std::vector<double> readPass(MeroFileSequenceResult& history) {
        std::vector<double> readings;
        MeroSequenceEntry entry;
        while (history.getNext(entry)) {
            readings.insert(readings.end(), {static_cast<double>(entry.objectId), entry.time, entry.value});
        }
        return readings;
    }

    std::filesystem::path path;
};

TEST_F(FileSequenceResult, WritesAlignedLinesWithTheObjectsName) {
    mero::Repository repository;
    const mero::RepositoryServices services(repository);
    const MeroId model = repository.addModel("Order", 0, mero::ModelAccess::Write, true).value();
    const MeroId task = repository.library().findClass(ClassCodeProcessLibrary, "Task")->id;
    const MeroId object = repository.addObject(model, task, "Check; \"ä\"\nnow").value();
    auto history = make();
    ASSERT_TRUE(history.openForWriting("# head\n"));
    EXPECT_FALSE(history.openForWriting("# again\n"));
    EXPECT_TRUE(history.addEntry(12.5, 3600.0, object));
    EXPECT_TRUE(history.addEntry(-1.0 / 3.0, 0.0, 4711));
    EXPECT_TRUE(history.addEntry(1e12, 0.4, 4711));
    ASSERT_TRUE(history.closeForReading());
    EXPECT_EQ(content(),
              "# head\n"
              "   1000002;       3600;    12.500000; Check; \"ä\" now\n"
              "      4711; 0;    -0.333333; ?\n"
              "      4711;          0; 1000000000000.000000; ?\n");
}

TEST_F(FileSequenceResult, ReadsPassAfterPassAndGoesOnWriting) {
    auto history = make();
    EXPECT_FALSE(history.addEntry(1.0, 1.0, 5)) << "nothing is open yet";
    ASSERT_TRUE(history.openForWriting("# a\n# b\n"));
    history.addEntry(1.0, 10.0, 5);
    MeroSequenceEntry entry;
    EXPECT_FALSE(history.getNext(entry)) << "a file can't be read while it is written";
    history.closeForReading();
    EXPECT_EQ(readPass(history), (std::vector<double>{5, 10, 1}));
    EXPECT_EQ(readPass(history), (std::vector<double>{5, 10, 1}));
    EXPECT_TRUE(history.addEntry(2.0, 20.0, 6));
    history.closeForReading();
    ASSERT_TRUE(history.getNext(entry));
    history.rewind();
    EXPECT_EQ(readPass(history), (std::vector<double>{5, 10, 1, 6, 20, 2})) << "from the start again";
}

TEST_F(FileSequenceResult, ReadsLinesOfAnyLengthAndEmptyFiles) {
    const std::string longName(5000, 'n');
    write("# head " + longName + "\n         1; 0; 2.500000; " + longName +
          "\n         2;          7; 3.000000; x\n");
    auto history = make();
    EXPECT_EQ(readPass(history), (std::vector<double>{1, 0, 2.5, 2, 7, 3}));
    write(std::string("1; 1; 2; a\0b\n2; 2; 3; x", 23));
    auto zeroByte = make();
    EXPECT_EQ(readPass(zeroByte), (std::vector<double>{1, 1, 2, 2, 2, 3})) << "the last line has no end";
    for (const std::size_t length : {125, 126, 127, 128, 129}) {
        const std::string line = "1; 1; 2; ";
        write(line + std::string(length - line.size(), 'n') + "\n2; 2; 3; x\n");
        auto fullLine = make();
        EXPECT_EQ(readPass(fullLine), (std::vector<double>{1, 1, 2, 2, 2, 3})) << length;
    }
    write("1; " + std::string(200, ' ') + "2; 3; name\n");
    auto blanks = make();
    EXPECT_EQ(readPass(blanks), (std::vector<double>{1, 2, 3}));
    for (const char* const empty : {"", "# only a header\n"}) {
        write(empty);
        auto emptyHistory = make();
        EXPECT_TRUE(readPass(emptyHistory).empty());
    }
    EXPECT_TRUE(SV::BoxDesk::GetGlobal().getRecords().empty());
}

TEST_F(FileSequenceResult, LargeValuesAreReadBackAsTheyWereWritten) {
    constexpr double Largest = std::numeric_limits<double>::max();
    const std::vector<double> readings{1, 0, 1.5e130, 1, Largest, -Largest, 2, 1e100, 2.5};
    auto history = make();
    ASSERT_TRUE(history.openForWriting("# head\n"));
    for (std::size_t first = 0; first < readings.size(); first += 3) {
        history.addEntry(readings[first + 2], readings[first + 1], static_cast<MeroId>(readings[first]));
    }
    history.closeForReading();
    EXPECT_EQ(readPass(history), readings);
    EXPECT_EQ(readPass(history), readings);
}

TEST_F(FileSequenceResult, TellsOfALineThatCannotBeRead) {
    for (const char* const broken : {"garbage\n", "1; 2\n", "1; x; 3; n\n", "; 1; 2; n\n"}) {
        write(std::string("# head\n") + broken);
        SV::BoxDesk::GetGlobal().clearRecords();
        auto history = make();
        EXPECT_TRUE(readPass(history).empty()) << broken;
        ASSERT_EQ(SV::BoxDesk::GetGlobal().getRecords().size(), 1U) << broken;
        EXPECT_EQ(SV::BoxDesk::GetGlobal().getRecords().front().message, SV::ResId(0x20051D9));
    }
}

TEST_F(FileSequenceResult, AVanishedFileIsEmptyWithoutABox) {
    auto history = make();
    history.openForWriting("# head\n");
    history.addEntry(1.0, 1.0, 5);
    history.closeForReading();
    std::filesystem::remove(path);
    mero::InternalErrorLog::GetGlobal().clear();
    EXPECT_TRUE(readPass(history).empty());
    EXPECT_TRUE(SV::BoxDesk::GetGlobal().getRecords().empty());
    EXPECT_EQ(mero::InternalErrorLog::GetGlobal().getErrors().size(), 1U);
}

TEST_F(FileSequenceResult, TellsOfAFileThatCannotBeMade) {
    MeroFileSequenceResult history(1, 1, "/nonexistent-folder/history.txt");
    EXPECT_FALSE(history.openForWriting("# head\n"));
    ASSERT_EQ(SV::BoxDesk::GetGlobal().getRecords().size(), 1U);
    EXPECT_EQ(SV::BoxDesk::GetGlobal().getRecords().front().message, SV::ResId(0x20051D7));
}

}  // namespace
