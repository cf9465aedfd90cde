#pragma once

#include <vector>

#include "apps/mero/spark_line.h"
#include "apps/mero/text_table.h"
#include "platform/interchange/history_file.h"
#include "platform/interchange/result_table.h"

namespace mero {

/// Tables of a result document: for each super agent one of its values and one of each history.
[[nodiscard]] std::vector<TextTable> tablesOf(const ResultDocument& document, const std::string& source,
                                              CharacterSet characters);
/// Of each history in a result document.
[[nodiscard]] std::vector<TextTable> historyTablesOf(const ResultDocument& document,
                                                     const std::string& source, CharacterSet characters);
/// Tables as they were shown after the run; of replications one for each measure.
[[nodiscard]] std::vector<TextTable> tablesOf(const ShownTables& shown, const std::string& source);
/// Readings of a history file, an object a row, with a small plot.
[[nodiscard]] TextTable tableOf(const HistoryFile& history, const std::string& source,
                                CharacterSet characters);

}  // namespace mero
