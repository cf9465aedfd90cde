#pragma once

#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "component/host/browser_objects.h"
#include "component/host/sv_peer.h"

#include "platform/toolkit/row_order.h"

namespace mero {

inline constexpr RowOrder::Row NoRow = std::numeric_limits<RowOrder::Row>::max();

struct BrowserRow {
    MeroId id;
    int depth;
    RowOrder::Row parent;  ///< `NoRow` for a root
    std::vector<RowOrder::Row> children;
    bool expanded = false;
};

struct BrowserColumn {
    SV::String title;
    SV::String toolTip;
    std::vector<SV::String> fields;  ///< by row, in order of making
    SV::String longest;              ///< of all texts that the column has had
    int width = 0;
    int alignment = 0;
    int depthOfLongest = 0;

    /// `depth`: levels by which the text is indented.
    void noteText(const SV::String& text, int depth) {
        constexpr std::size_t CharactersOfLevel = 3;
        if (text.Len() + static_cast<std::size_t>(depth) * CharactersOfLevel >
            longest.Len() + static_cast<std::size_t>(depthOfLongest) * CharactersOfLevel) {
            longest = text;
            depthOfLongest = depth;
        }
    }
};

}  // namespace mero

/// Column 0 is that of the labels.
struct MeroShrinkExpandBrowserObjects::Impl {
    std::vector<mero::BrowserColumn> columns{1};
    std::vector<mero::BrowserRow> rows;  ///< in order of making
    std::vector<mero::RowOrder::Row> roots;
    /// Rows whose identifier isn't their place in `rows`, counted from 1; the others need no map.
    std::unordered_map<MeroId, mero::RowOrder::Row> otherRows;
    std::vector<SV::String> headers;
    SV::String secondHeader;
    int summaryRows = 0;
    SV::String searched;
    int searchedRow = -1;
    MeroBrowser* browser = nullptr;

    [[nodiscard]] mero::RowOrder::Row find(MeroId rowId) const {
        const auto expected = static_cast<std::size_t>(rowId) - 1;
        if (rowId > 0 && expected < rows.size() && rows[expected].id == rowId) {
            return static_cast<mero::RowOrder::Row>(expected);
        }
        const auto place = otherRows.find(rowId);
        return place != otherRows.end() ? place->second : mero::NoRow;
    }

    [[nodiscard]] mero::RowOrder::Row lastDescendant(mero::RowOrder::Row row) const {
        while (!rows[row].children.empty()) {
            row = rows[row].children.back();
        }
        return row;
    }

    /// Null outside the table.
    [[nodiscard]] mero::BrowserRow* rowShownAt(int place) {
        return hasPlace(place) ? &rows[rowAt(place)] : nullptr;
    }
    [[nodiscard]] bool hasPlace(int place) const {
        return place >= 0 && static_cast<std::size_t>(place) < rows.size();
    }
    [[nodiscard]] mero::RowOrder::Row rowAt(int place) const {
        return ordered().rowAt(static_cast<std::size_t>(place));
    }

    [[nodiscard]] bool hasColumn(int column) const {
        return column >= 0 && static_cast<std::size_t>(column) < columns.size();
    }
    [[nodiscard]] mero::BrowserColumn& columnAt(int column) {
        return columns[static_cast<std::size_t>(column)];
    }
    void setField(mero::RowOrder::Row row, int column, const SV::String& text) {
        columnAt(column).fields[row] = text;
        columnAt(column).noteText(text, column == 0 ? rows[row].depth : 0);
    }

    [[nodiscard]] std::vector<mero::RowOrder::Row> allRows() const {
        std::vector<mero::RowOrder::Row> all;
        all.reserve(rows.size());
        while (all.size() < rows.size()) {
            const auto run = ordered().runFrom(all.size());
            all.insert(all.end(), run.begin(), run.end());
        }
        return all;
    }

    /// Places of all rows. A table is mostly filled before anybody asks for a place: so the order is made
    /// then, and from then on kept row by row.
    [[nodiscard]] const mero::RowOrder& ordered() const;
    /// Enters the row that comes next into `rows`; `parent` is `NoRow` for a root.
    void enterInOrder(mero::RowOrder::Row parent);

    /// In any column, upper or lower case of ASCII letters.
    [[nodiscard]] bool holdsText(mero::RowOrder::Row row, std::string_view text) const;
    /// False, and an internal error, without a browser.
    bool expandEveryRow(bool expand);
    void tell(const SV::Change& change) const;

private:
    mutable mero::RowOrder order;  ///< of all rows, or empty
};
