#include "apps/mero/html_parts.h"

namespace mero {

const std::string_view HtmlPageStyle = R"(
:root { color-scheme: light dark; --back: #ffffff; --text: #1b1f24; --quiet: #59636e; --line: #d0d7de;
  --band: #f6f8fa; --accent: #0072b2; }
@media (prefers-color-scheme: dark) {
  :root { --back: #15191e; --text: #e6e9ec; --quiet: #9aa4ae; --line: #363d45; --band: #1d2329;
    --accent: #56b4e9; }
}
* { box-sizing: border-box; }
body { margin: 0 auto; max-width: 1400px; padding: 24px; background: var(--back); color: var(--text);
  font: 16px/1.5 system-ui, sans-serif; }
h1 { margin: 0 0 8px; font-size: 1.6em; line-height: 1.2; }
h2 { margin: 40px 0 0; font-size: 1.25em; }
h2 small, .quiet { color: var(--quiet); font-weight: normal; }
p { margin: 4px 0 12px; }
dl { display: grid; grid-template-columns: max-content 1fr; gap: 4px 16px; margin: 12px 0; }
dt { color: var(--quiet); }
dd { margin: 0; overflow-wrap: anywhere; }
summary { cursor: pointer; color: var(--accent); }
.scroll { overflow: auto; max-height: 85vh; border: 1px solid var(--line); border-radius: 6px; }
table { border-collapse: separate; border-spacing: 0; width: 100%; font-variant-numeric: tabular-nums; }
th, td { padding: 4px 12px; text-align: right; white-space: nowrap; background: var(--back); }
tbody tr:nth-child(even) > * { background: var(--band); }
thead { position: sticky; top: 0; z-index: 2; }
thead th { vertical-align: bottom; border-bottom: 1px solid var(--line); }
thead tr + tr th { font-weight: normal; }
thead th.measure { text-align: center; }
th.label { position: sticky; left: 0; z-index: 1; text-align: left;
  padding-left: calc(12px + 20px * var(--depth, 0)); }
tbody th.label { font-weight: normal; }
tfoot > tr > * { border-top: 1px solid var(--line); font-weight: bold; }
tfoot tr + tr > * { border-top: 0; }
.unit { display: block; color: var(--quiet); font-size: 0.85em; font-weight: normal; }
button { font: inherit; color: var(--accent); background: none; border: 1px solid var(--line);
  border-radius: 4px; cursor: pointer; padding: 2px 10px; margin: 0 8px 8px 0; }
button.fold { border: 0; padding: 0; margin: 0 4px 0 0; width: 1.2em; }
button:focus-visible, summary:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }
figure { margin: 24px 0; overflow: auto; }
figcaption { color: var(--quiet); }
svg { max-width: 100%; height: auto; }
@media print { .scroll { overflow: visible; max-height: none; border: 0; } button { display: none; } }
)";

const std::string_view HtmlPageScript = R"(
for (const table of document.querySelectorAll("table.tree")) {
  const rows = [...table.tBodies[0].rows];
  const depths = rows.map(row => Number(row.dataset.depth));
  const open = rows.map(() => true);
  const buttons = rows.map(() => null);
  const refresh = () => {
    let closedAt = Infinity;
    rows.forEach((row, index) => {
      if (depths[index] <= closedAt) closedAt = Infinity;
      row.hidden = depths[index] > closedAt;
      if (!row.hidden && !open[index]) closedAt = depths[index];
      if (buttons[index]) {
        buttons[index].textContent = open[index] ? "\u25be" : "\u25b8";
        buttons[index].setAttribute("aria-expanded", open[index]);
      }
    });
  };
  rows.forEach((row, index) => {
    if (!(depths[index + 1] > depths[index])) return;
    const button = document.createElement("button");
    button.className = "fold";
    button.setAttribute("aria-label", "Rows below " + row.cells[0].textContent);
    button.onclick = () => { open[index] = !open[index]; refresh(); };
    row.cells[0].prepend(button);
    buttons[index] = button;
  });
  if (!buttons.some(button => button)) continue;
  const tools = document.createElement("div");
  for (const [text, state] of [["Expand all", true], ["Collapse all", false]]) {
    const button = document.createElement("button");
    button.textContent = text;
    button.onclick = () => { open.fill(state); refresh(); };
    tools.append(button);
  }
  table.parentElement.before(tools);
  refresh();
}
)";

}  // namespace mero
