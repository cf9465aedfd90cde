#include "tests/apps/mero/program_run.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

#include "apps/mero/run_mero.h"

namespace mero::test {

ProgramRun runProgram(const std::vector<std::string>& arguments, std::size_t width) {
    std::ostringstream out;
    std::ostringstream err;
    Console console{out, err};
    console.width = width;
    ProgramRun run;
    run.status = runMero(arguments, console);
    run.out = out.str();
    run.err = err.str();
    return run;
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "mero-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string readFile(const std::string& name) {
    std::ifstream input(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

void writeFile(const std::string& name, const std::string& bytes) {
    std::ofstream(name, std::ios::binary) << bytes;
}

std::string sourceFile(const std::string& name) {
    return std::string(MERO_SOURCE_DIR) + "/" + name;
}

std::string orderDocument() {
    return R"({
  "format": "mero-repository", "version": 1,
  "models": [
    { "name": "Order", "type": "Business process",
      "objects": [
        { "name": "Begin", "class": "Start event" },
        { "name": "Check", "class": "Task", "attributes": { "Execution time": "00:000:00:30:00" } },
        { "name": "Good?", "class": "Exclusive gateway" },
        { "name": "Pack", "class": "Task", "attributes": { "Execution time": "00:000:00:10:00" } },
        { "name": "End", "class": "End event" }
      ],
      "relations": [
        { "class": "Sequence flow", "from": "Begin", "to": "Check" },
        { "class": "Sequence flow", "from": "Check", "to": "Good?" },
        { "class": "Sequence flow", "from": "Good?", "to": "Check", "attributes": { "Probability": 0.5 } },
        { "class": "Sequence flow", "from": "Good?", "to": "Pack", "attributes": { "Probability": 0.5 } },
        { "class": "Sequence flow", "from": "Pack", "to": "End" }
      ],
      "agents": [
        { "name": "Counts", "class": "Process agent", "objects": "all \"Activity\"",
          "definition": "AGENT\npath-analysis\nFREQUENCY\n name:\"F\"\n resultscope:mainobjects\n relative\nFREQUENCY\n name:\"A\"\n history-mem\n resultscope:mainobjects\n absolute" }
      ] },
    { "name": "Staff", "type": "Working environment", "objects": [ { "name": "Ann", "class": "Worker" } ] }
  ]
})";
}

}  // namespace mero::test
