#include "platform/repository/sqlite_store.h"

#include <csignal>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <random>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/platform/repository/sample_models.h"

namespace mero {
namespace {

using OpenMode = SqliteStore::OpenMode;

/// Everything that a repository holds, as text.
std::string dump(const Repository& repository) {
    const auto dumpValues = [](const AttributeValues& values) {
        std::string text;
        for (const auto& [attribute, value] : values) {
            text += fmt::format(" {}=", attribute);
            if (const auto* words = std::get_if<SV::String>(&value)) {
                text += fmt::format("'{}'", words->view());
            } else if (const auto* whole = std::get_if<std::int32_t>(&value)) {
                text += fmt::format("i{}", *whole);
            } else {
                text += fmt::format("d{:a}", std::get<double>(value));
            }
        }
        return text + "\n";
    };
    std::string text;
    for (const MeroId modelId : repository.modelIds()) {
        const Model& model = *repository.findModel(modelId);
        text += fmt::format("{} '{}' {} {} {}\n", model.id, model.name.view(), model.type,
                            static_cast<int>(model.access), model.loaded);
        for (const MeroId id : model.objects) {
            const Object& object = *repository.findObject(id);
            text += fmt::format(" {} {} {} '{}'", id, object.modelId, object.classId, object.name.view());
            text += dumpValues(object.values);
        }
        for (const MeroId id : model.relations) {
            const Relation& relation = *repository.findRelation(id);
            text += fmt::format(" {} {} {}-{}", id, relation.classId, relation.from, relation.to);
            text += dumpValues(relation.values);
        }
    }
    return text;
}

void fill(Repository& repository) {
    ModelBuilder builder(repository);
    const MeroId order = builder.process("Order; \"1\"", false, ModelAccess::Read);
    const MeroId check = builder.object(order, "Task",
                                        "Pr\xC3\xBC"
                                        "fen 'x'\n\"y\"");
    builder.set(check, "Execution time", SV::String("00:001:02:03:04"));
    builder.set(check, "Costs", 0.1);
    builder.set(check, "Number", std::numeric_limits<std::int32_t>::min());
    builder.set(check, "Loop", SV::String("parallel"));
    const MeroId start = builder.object(order, "Start event", "\xE5\xA7\x8B");
    const MeroId flow = builder.flow(start, check);
    const MeroId probability =
        Library::standard().findRelationAttribute(repository.findRelation(flow)->classId, "Probability")->id;
    EXPECT_TRUE(repository.setRelationValue(flow, probability, 1.0));
    const MeroId barred = builder.flow(start, check);
    EXPECT_TRUE(repository.setRelationValue(barred, probability, 0.0));
    EXPECT_NE(findValue(repository.findRelation(barred)->values, probability), nullptr)
        << "never isn't unset";
    const MeroId ann = builder.object(builder.environment("Staff"), "Worker", "Ann");
    builder.set(ann, "Calendar", SV::String(""));
    builder.set(ann, "Hourly wages", 2);
    EXPECT_TRUE(repository.addModel("Map", CompanyMap, ModelAccess::Write, true));
}

class SqliteStoreTest : public testing::Test {
protected:
    SqliteStoreTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "store.XXXXXX").string();
        folder = mkdtemp(pattern.data());
        path = folder / "test.mero";
    }
    ~SqliteStoreTest() override { std::filesystem::remove_all(folder); }

    std::unique_ptr<SqliteStore> open(OpenMode mode) {
        auto opened = SqliteStore::open(path, mode);
        EXPECT_TRUE(opened) << (opened ? "" : opened.error().text);
        return opened ? std::move(opened.value()) : nullptr;
    }
    std::string refusal(OpenMode mode) {
        const auto opened = SqliteStore::open(path, mode);
        return opened ? "opened" : opened.error().text;
    }
    void makeFilled() {
        const auto store = open(OpenMode::Create);
        fill(store->repository());
        ASSERT_TRUE(store->commit());
    }
    void change(const char* sql) {
        sqlite3* database = nullptr;
        sqlite3_open(path.c_str(), &database);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }
    std::size_t filesInFolder() {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }

    std::filesystem::path folder;
    std::filesystem::path path;
};

TEST_F(SqliteStoreTest, ReopenedRepositoryIsTheSameAndGoesOnCounting) {
    makeFilled();
    EXPECT_EQ(filesInFolder(), 1u);
    Repository expected;
    fill(expected);
    {
        const auto store = open(OpenMode::Read);
        EXPECT_EQ(dump(store->repository()), dump(expected));
        EXPECT_FALSE(store->commit());
    }
    EXPECT_EQ(filesInFolder(), 1u);
    const auto store = open(OpenMode::Write);
    for (Repository* repository : {&expected, &store->repository()}) {
        const MeroId last = repository->findModel("Map")->id;
        ASSERT_TRUE(repository->removeModel(last));
    }
    ASSERT_TRUE(store->commit());
    EXPECT_EQ(open(OpenMode::Write)->repository().addModel("New", 0, ModelAccess::Write, true).value(),
              expected.addModel("New", 0, ModelAccess::Write, true).value());
}

TEST_F(SqliteStoreTest, OnlyCommittedChangesAreKept) {
    const auto first = open(OpenMode::Create);
    fill(first->repository());
    EXPECT_FALSE(std::filesystem::exists(path)) << "opening makes no file";
    ASSERT_TRUE(first->commit());
    const std::string saved = dump(first->repository());
    ASSERT_TRUE(first->repository().removeModel(first->repository().findModel("Staff")->id));
    EXPECT_EQ(dump(open(OpenMode::Read)->repository()), saved);
    ASSERT_TRUE(first->commit());
    EXPECT_EQ(dump(open(OpenMode::Read)->repository()), dump(first->repository()));
}

TEST_F(SqliteStoreTest, RandomChangesAreSavedAsTheyAre) {
    makeFilled();
    std::mt19937 random(7);
    const auto pick = [&random](std::size_t count) { return std::size_t(random() % count); };
    for (int round = 0; round < 20; ++round) {
        const auto store = open(OpenMode::Write);
        Repository& repository = store->repository();
        ModelBuilder builder(repository);
        for (int step = 0; step < 20; ++step) {
            if (repository.findModel("Work") == nullptr) {
                builder.process("Work");
            }
            const Model& model = *repository.findModel("Work");
            const MeroId task = builder.object(model.id, "Task", "");
            builder.flow(task, model.objects[pick(model.objects.size())]);
            builder.set(task, "Number", static_cast<std::int32_t>(random() % 3));
            const MeroId object = model.objects[pick(model.objects.size())];
            switch (pick(8)) {
                case 0:
                    ASSERT_TRUE(repository.removeModel(model.id));
                    break;
                case 1:
                case 2:
                    ASSERT_TRUE(repository.removeObject(object));
                    break;
                case 3:
                    ASSERT_TRUE(repository.renameObject(object, fmt::format("renamed {} {}", round, step)));
                    break;
                case 4:
                    ASSERT_TRUE(repository.setAccess(model.id, ModelAccess::Read));
                    break;
                default:
                    builder.set(object, "Costs", static_cast<double>(pick(2)));
            }
        }
        ASSERT_TRUE(store->commit());
        ASSERT_EQ(dump(open(OpenMode::Read)->repository()), dump(repository)) << round;
    }
}

TEST_F(SqliteStoreTest, LoadingForARunIsNotSaved) {
    makeFilled();
    {
        const auto store = open(OpenMode::Write);
        Repository& repository = store->repository();
        const MeroId order = repository.modelIds().front();
        ASSERT_TRUE(repository.setLoaded(order, true));
        ASSERT_TRUE(repository.setAccess(order, ModelAccess::Write));
        ASSERT_TRUE(store->commit());
    }
    const auto store = open(OpenMode::Read);
    const Model& order = *store->repository().findModel(store->repository().modelIds().front());
    EXPECT_FALSE(order.loaded);
    EXPECT_EQ(order.access, ModelAccess::Write);
}

TEST_F(SqliteStoreTest, WhatIsNoRepositoryIsRefusedAndLeftAlone) {
    struct Case {
        std::string reason;
        std::function<void()> prepare;
    };
    const auto write = [this](std::string_view content) { std::ofstream(path, std::ios::binary) << content; };
    const Case cases[] = {
        {"the file is not a Mero repository", [&] { write("AGENT\npath-analysis\n"); }},
        {"the file is not a Mero repository", [&] { write(std::string(5000, 'x')); }},
        {"the file is not a Mero repository", [&] { change("CREATE TABLE other (x)"); }},
        {"the file is not a Mero repository", [&] { change("PRAGMA application_id=7"); }},
        {"a newer version of Mero wrote the file (schema 2)",
         [&] { makeFilled(), change("PRAGMA user_version=2"); }},
        {"the file is damaged (unknown class 77777)",
         [&] { makeFilled(), change("UPDATE object SET class = 77777 WHERE id = 1000002"); }},
        {"the file is damaged (no model has the identifier 5)",
         [&] { makeFilled(), change("UPDATE object SET model = 5 WHERE id = 1000002"); }},
        {"the file is damaged (no object has the identifier 7)",
         [&] { makeFilled(), change("UPDATE relation SET target = 7"); }},
        {"the file is damaged (unknown model type 3)",
         [&] { makeFilled(), change("UPDATE model SET type = 'Plan'"); }},
        {"the file is damaged (the identifier 99999999999 is out of range)",
         [&] { makeFilled(), change("UPDATE object SET id = 99999999999 WHERE id = 1000002"); }},
        {"the file is damaged (the identifier 1 is out of range)",
         [&] { makeFilled(), change("UPDATE model SET id = 1 WHERE id = 1000001"); }},
        {"the file is damaged (the attribute \"Costs\" needs a number)",
         [&] { makeFilled(), change("UPDATE object_value SET value = 'x' WHERE value = 0.1"); }},
        {"the file is damaged (the counter \"next id\" is missing)",
         [&] { makeFilled(), change("DELETE FROM counter WHERE name = 'next id'"); }},
    };
    for (const Case& item : cases) {
        item.prepare();
        const auto size = std::filesystem::file_size(path);
        for (const OpenMode mode : {OpenMode::Read, OpenMode::Write, OpenMode::Create}) {
            EXPECT_EQ(refusal(mode), fmt::format("{}: {}", path.string(), item.reason));
        }
        EXPECT_EQ(std::filesystem::file_size(path), size);
        std::filesystem::remove(path);
    }
}

TEST_F(SqliteStoreTest, GarbledFilesAreRefusedOrReadWithoutHarm) {
    makeFilled();
    std::ifstream input(path, std::ios::binary);
    const std::string good((std::istreambuf_iterator<char>(input)), {});
    int refusals = 0;
    std::mt19937 random(11);
    for (int round = 0; round < 150; ++round) {
        std::string bad = good;
        if (round % 3 == 0) {
            bad.resize(random() % good.size());
        } else {
            for (int count = 0; count < 40; ++count) {
                bad[random() % bad.size()] = static_cast<char>(random());
            }
        }
        std::ofstream(path, std::ios::binary | std::ios::trunc) << bad;
        const auto opened = SqliteStore::open(path, OpenMode::Read);
        if (!opened) {
            ++refusals;
            EXPECT_TRUE(opened.error().text.starts_with(path.string() + ": ")) << opened.error().text;
        }
    }
    EXPECT_GT(refusals, 100) << "only damage to unused bytes passes";
}

TEST_F(SqliteStoreTest, PlacesWithoutAFileAreNamed) {
    EXPECT_EQ(refusal(OpenMode::Read), path.string() + ": there is no such file");
    EXPECT_EQ(refusal(OpenMode::Write), path.string() + ": there is no such file");
    path = folder;
    EXPECT_EQ(refusal(OpenMode::Create), path.string() + ": this is not a file");
    path = folder / "missing" / "test.mero";
    EXPECT_EQ(refusal(OpenMode::Create), path.string() + ": its folder doesn't exist");
    path = folder / "empty.mero";
    std::ofstream(path).close();
    EXPECT_TRUE(open(OpenMode::Read)->repository().modelIds().empty())
        << "a process killed before its first commit leaves an empty file";
    path = folder / "odd #1?%41.mero";
    makeFilled();
    EXPECT_EQ(open(OpenMode::Read)->repository().modelIds().size(), 3u);
}

TEST_F(SqliteStoreTest, AFileThatOthersChangedOrHoldIsNotOverwritten) {
    makeFilled();
    const auto late = open(OpenMode::Write);
    ModelBuilder(late->repository()).process("Late");
    {
        const auto early = open(OpenMode::Write);
        ModelBuilder(early->repository()).process("Early");
        ASSERT_TRUE(early->commit());
    }
    const auto refused = late->commit();
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().text, path.string() +
                                        ": another program has changed the file since it was "
                                        "read; nothing was saved");
    const auto store = open(OpenMode::Write);
    EXPECT_NE(store->repository().findModel("Early"), nullptr);
    EXPECT_EQ(store->repository().findModel("Late"), nullptr);

    sqlite3* holder = nullptr;
    sqlite3_open(path.c_str(), &holder);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    ModelBuilder(store->repository()).process("Later");
    const auto held = store->commit();
    ASSERT_FALSE(held);
    EXPECT_EQ(held.error().text, path.string() + ": another program is using the file");
    sqlite3_close(holder);
    EXPECT_TRUE(store->commit()) << "the changes are still there";
    EXPECT_NE(open(OpenMode::Read)->repository().findModel("Later"), nullptr);
}

TEST_F(SqliteStoreTest, AFullDiskLeavesTheOldState) {
    makeFilled();
    const auto store = open(OpenMode::Write);
    ModelBuilder builder(store->repository());
    const std::string before = dump(store->repository());
    const MeroId big = builder.process("Big");
    for (int count = 0; count < 5000; ++count) {
        builder.object(big, "Task", "");
    }
    struct rlimit limit {};
    getrlimit(RLIMIT_FSIZE, &limit);
    const auto unlimited = limit.rlim_cur;
    const auto handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
    limit.rlim_cur = 100000;
    setrlimit(RLIMIT_FSIZE, &limit);
    const bool committed = store->commit().isGood();
    const auto fresh = SqliteStore::open(folder / "fresh.mero", OpenMode::Create);
    fill(fresh.value()->repository());
    ModelBuilder(fresh.value()->repository())
        .object(fresh.value()->repository().findModel("Map")->id, "Task", std::string(200000, 'x').c_str());
    const bool madeFile = fresh.value()->commit().isGood();
    limit.rlim_cur = unlimited;
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handlerBefore);

    EXPECT_FALSE(committed);
    EXPECT_FALSE(madeFile);
    EXPECT_FALSE(std::filesystem::exists(folder / "fresh.mero"));
    EXPECT_EQ(dump(open(OpenMode::Read)->repository()), before);
    EXPECT_TRUE(store->commit());
    EXPECT_EQ(dump(open(OpenMode::Read)->repository()), dump(store->repository()));
}

TEST_F(SqliteStoreTest, AProcessKilledWhileSavingLeavesTheStateBeforeOrAfter) {
    makeFilled();
    const std::string before = dump(open(OpenMode::Read)->repository());
    const auto enlarge = [](Repository& repository) {
        ModelBuilder builder(repository);
        const MeroId model = builder.process("Big");
        for (int count = 0; count < 2000; ++count) {
            builder.set(builder.object(model, "Task", ""), "Number", count + 1);
        }
    };
    std::mt19937 random(3);
    for (int round = 0; round < 15; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            auto opened = SqliteStore::open(path, OpenMode::Write);
            if (opened) {
                enlarge(opened.value()->repository());
                (void)opened.value()->commit();
            }
            _exit(0);
        }
        ASSERT_GT(child, 0);
        usleep(static_cast<useconds_t>(random() % 60000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const auto store = open(OpenMode::Write);
        ASSERT_NE(store, nullptr);
        if (const Model* model = store->repository().findModel("Big")) {
            EXPECT_EQ(model->objects.size(), 2000u);
            ASSERT_TRUE(store->repository().removeModel(model->id));
            ASSERT_TRUE(store->commit());
        }
        EXPECT_EQ(dump(store->repository()), before);
    }
}

TEST_F(SqliteStoreTest, WriteProtectedFilesCanBeRead) {
    using std::filesystem::perms;
    makeFilled();
    const perms readable = perms::owner_read | perms::group_read | perms::others_read;
    const perms enterable = perms::owner_exec | perms::group_exec | perms::others_exec;
    std::filesystem::permissions(path, readable);
    std::filesystem::permissions(folder, readable | enterable);
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;  // the superuser can write everywhere
        if (geteuid() == 0 && setuid(nobody) != 0) {
            _exit(3);
        }
        const auto reader = SqliteStore::open(path, OpenMode::Read);
        const bool isRead = reader && reader.value()->repository().modelIds().size() == 3;
        const bool isRefused =
            refusal(OpenMode::Write) == path.string() + ": no write access to the file or its folder";
        _exit(isRead && isRefused ? 0 : isRead ? 1 : 2);
    }
    int status = -1;
    waitpid(child, &status, 0);
    std::filesystem::permissions(folder, perms::owner_all);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "1: opened for writing, 2: not read, 3: no other user";
    EXPECT_EQ(filesInFolder(), 1u);
}

}  // namespace
}  // namespace mero
