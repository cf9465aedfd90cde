#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/interchange/history_file.h"
#include "platform/interchange/picture_document.h"
#include "platform/interchange/result_table.h"
#include "platform/repository/repository.h"

namespace mero {

/// A picture with its title, and the table that it belongs to, if there is one.
struct ResultPicture {
    Picture picture;
    std::string title;
    std::optional<std::size_t> table = {};
};

/// Pictures of shown results: for each measure a chart of its largest values, and each process that has
/// values coloured by them. Values of several paths to an object add up; over replications it is their mean.
[[nodiscard]] std::vector<ResultPicture> picturesOf(const std::vector<ResultTable>& tables,
                                                    const RunDescription& run, const Repository& repository);
/// Curves of the histories in a document, up to eight objects with the most readings in each. `run` tells
/// title and time base; values are unscaled.
[[nodiscard]] std::vector<ResultPicture> historiesOf(const ResultDocument& document,
                                                     const RunDescription& run);
/// The same of a history file.
[[nodiscard]] std::vector<ResultPicture> historiesOf(const HistoryFile& history, const std::string& source);
/// Charts of the values in a document, which knows nothing of processes.
[[nodiscard]] std::vector<ResultPicture> chartsOf(const ResultDocument& document, const RunDescription& run);

}  // namespace mero
