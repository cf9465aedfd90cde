#include <algorithm>
#include <fstream>
#include <numeric>
#include <string>

#include "component/host/browser.h"
#include "component/host/host_dialogs.h"
#include "component/host/sv_boxes.h"

#include "platform/toolkit/browser_state.h"
#include "platform/toolkit/toolkit_messages.h"

namespace {

using RowHandle = MeroShrinkExpandBrowserObjects::RowHandle;

/// Rows of a table as they are written, with titles as the first one.
struct Page {
    const MeroShrinkExpandBrowserObjects& objects;
    std::vector<RowHandle> rows;

    [[nodiscard]] int columnCount() const { return objects.getNumberOfColumns() + 1; }
    [[nodiscard]] SV::String title(int column) const {
        return column == 0 ? SV::String(mero::MessageObject) : objects.getColumnTitle(column);
    }
};

void appendPadded(std::string& line, const SV::String& text, std::size_t width, bool toTheRight) {
    const std::size_t length = text.CountCodePoints();
    const std::string padding(width > length ? width - length : 0, ' ');
    line += toTheRight ? padding + text.GetStr() : text.GetStr() + padding;
}

std::string plainText(const Page& page) {
    constexpr std::size_t IndentOfLevel = 2;
    const auto labelOf = [&](RowHandle row) {
        const auto depth = static_cast<std::size_t>(page.objects.getDepthOf(row));
        return SV::String(std::string(depth * IndentOfLevel, ' ')) + page.objects.getFieldOf(row, 0);
    };
    std::vector<std::size_t> widths;
    for (int column = 0; column < page.columnCount(); ++column) {
        std::size_t width = page.title(column).CountCodePoints();
        for (const RowHandle row : page.rows) {
            const SV::String text = column == 0 ? labelOf(row) : page.objects.getFieldOf(row, column);
            width = std::max(width, text.CountCodePoints());
        }
        widths.push_back(width);
    }
    std::string text;
    for (const SV::String& header : page.objects.getHeaders()) {
        text += std::string(header.GetStr()) + "\n\n";
    }
    const auto appendLine = [&](const auto& cellOf) {
        std::string line;
        for (int column = 0; column < page.columnCount(); ++column) {
            line += column == 0 ? "" : "  ";
            appendPadded(line, cellOf(column), widths[static_cast<std::size_t>(column)], column > 0);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    };
    appendLine([&](int column) { return page.title(column); });
    text += std::string(std::accumulate(widths.begin(), widths.end(), 2 * (widths.size() - 1)), '-') + "\n";
    for (const RowHandle row : page.rows) {
        appendLine(
            [&](int column) { return column == 0 ? labelOf(row) : page.objects.getFieldOf(row, column); });
    }
    return text;
}

/// A field of RFC 4180.
std::string csvField(const SV::String& text) {
    if (text.view().find_first_of(",\"\r\n") == std::string_view::npos) {
        return text.GetStr();
    }
    std::string quoted = "\"";
    for (const char each : text.view()) {
        quoted += each == '"' ? std::string("\"\"") : std::string(1, each);
    }
    return quoted + "\"";
}

/// RFC 4180, lines end with CR LF. The title of the first column tells the run and the scale.
std::string csvText(const Page& page) {
    std::string text;
    for (int column = 0; column < page.columnCount(); ++column) {
        const bool isLabel = column == 0 && !page.objects.getHeaders().empty();
        text += (column == 0 ? "" : ",") +
                csvField(isLabel ? page.objects.getHeaders().front() : page.title(column));
    }
    text += "\r\n";
    for (const RowHandle row : page.rows) {
        for (int column = 0; column < page.columnCount(); ++column) {
            text += (column == 0 ? "" : ",") + csvField(page.objects.getFieldOf(row, column));
        }
        text += "\r\n";
    }
    return text;
}

std::string escaped(const SV::String& text) {
    std::string result;
    for (const char each : text.view()) {
        switch (each) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += each;
        }
    }
    return result;
}

std::string htmlText(const Page& page) {
    const SV::String& second = page.objects.getSecondHeader();
    std::string text = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + escaped(second) +
                       "</title>\n<style>body{font-family:sans-serif}table{border-collapse:collapse}"
                       "th,td{padding:3px 10px;border-bottom:1px solid #ccc;text-align:right;"
                       "font-variant-numeric:tabular-nums}"
                       "th:first-child,td:first-child{text-align:left}</style></head>\n<body>\n";
    for (const SV::String& header : page.objects.getHeaders()) {
        text += "<h3>" + escaped(header) + "</h3>\n";
    }
    text += "<table cellspacing=\"0\" cellpadding=\"3\">\n<thead><tr>";
    for (int column = 0; column < page.columnCount(); ++column) {
        text += std::string(column == 0 ? "<th align=\"left\">" : "<th align=\"right\">") +
                escaped(page.title(column)) + "</th>";
    }
    text += "</tr></thead>\n<tbody>\n";
    for (const RowHandle row : page.rows) {
        text += "<tr>";
        for (int column = 0; column < page.columnCount(); ++column) {
            const std::string cell = escaped(page.objects.getFieldOf(row, column));
            std::string indent;
            for (int level = 0; column == 0 && level < page.objects.getDepthOf(row); ++level) {
                indent += "&nbsp;&nbsp;&nbsp;";
            }
            text += (column == 0 ? "<td align=\"left\">" : "<td align=\"right\">") + indent + cell + "</td>";
        }
        text += "</tr>\n";
    }
    return text + "</tbody></table>\n</body></html>\n";
}

MeroTableFormat formatOf(std::string_view path) {
    if (path.ends_with(".csv")) {
        return MeroTableFormat::Csv;
    }
    return path.ends_with(".html") || path.ends_with(".htm") ? MeroTableFormat::Html : MeroTableFormat::Text;
}

}  // namespace

SV::String MeroShrinkExpandBrowserObjects::getTableText(MeroTableFormat format, bool expandedRowsOnly) const {
    Page page{*this, expandedRowsOnly ? getRowsInSight() : impl->allRows()};
    switch (format) {
        case MeroTableFormat::Csv:
            return csvText(page);
        case MeroTableFormat::Html:
            return htmlText(page);
        case MeroTableFormat::Text:
            break;
    }
    return plainText(page);
}

SV::String MeroShrinkExpandBrowserObjects::getCopyText(const std::vector<int>& rows) const {
    std::vector<RowHandle> handles;
    std::ranges::transform(rows, std::back_inserter(handles), [this](int row) { return getHandle(row); });
    const Page page{*this, rows.empty() ? getRowsInSight() : handles};
    std::string text;
    for (const SV::String& header : getHeaders()) {
        text += std::string(header.GetStr()) + "\n";
    }
    for (int column = 0; column < page.columnCount(); ++column) {
        text += (column == 0 ? "" : "\t") + std::string(page.title(column).GetStr());
    }
    text += "\n";
    for (const RowHandle row : page.rows) {
        for (int column = 0; column < page.columnCount(); ++column) {
            text += (column == 0 ? "" : "\t") + std::string(getFieldOf(row, column).GetStr());
        }
        text += "\n";
    }
    return text;
}

bool MeroShrinkExpandBrowserObjects::saveTo(const SV::String& path, MeroTableFormat format) const {
    std::ofstream file(path.GetStr(), std::ios::binary);
    const SV::String text = getTableText(format);
    file.write(text.GetStr(), static_cast<std::streamsize>(text.Len()));
    file.close();
    return !file.fail();
}

bool MeroShrinkExpandBrowserObjects::saveIt(SV::Window* parent) {
    MeroFileDialog dialog(parent, SV::String(mero::MessageSaveTable), true);
    dialog.SetFilter(SV::String(mero::MessageTableFiles), "*.txt *.csv *.html");
    if (dialog.Execute() != SV::DialogOk) {
        return false;
    }
    if (!saveTo(dialog.GetPath(), formatOf(dialog.GetPath().view()))) {
        MeroErrorBox(parent, SV::BoxStyleError, SV::String(mero::MessageTableNotWritten) + dialog.GetPath())
            .Execute(0);
        return false;
    }
    return true;
}

bool MeroShrinkExpandBrowserObjects::printContent(SV::Window* parent) {
    return SV::Toolkit::GetGlobal().printDocument(parent, getSecondHeader(),
                                                  getTableText(MeroTableFormat::Html, true));
}

bool MeroShrinkExpandBrowserObjects::search(SV::Window* parent) {
    MeroInputDialog dialog(parent, SV::String(mero::MessageSearchTitle),
                           SV::String(mero::MessageSearchPrompt));
    dialog.SetInput(impl->searched);
    if (dialog.Execute() != SV::DialogOk || dialog.GetInput().IsEmpty()) {
        return false;
    }
    const bool isNew = dialog.GetInput() != impl->searched;
    impl->searched = dialog.GetInput();
    const int row = findText(impl->searched, isNew ? 0 : impl->searchedRow + 1);
    if (row < 0) {
        MeroInfoBox(parent, SV::String(mero::MessageNotFound)).Execute();
        return false;
    }
    impl->searchedRow = row;
    showRow(row);
    return true;
}
