#pragma once

/// A place for printed pages.
class MeroPrinter {
public:
    virtual ~MeroPrinter() = default;
};

/// Printer of browser and graph output, or null if nothing can be printed, not even to a file. `withFile`:
/// a file counts as a printer. Not owned.
[[nodiscard]] MeroPrinter* Mero_GetPrinter(bool withFile);
