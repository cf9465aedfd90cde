#pragma once

#include <stdexcept>
#include <string>

namespace mero {

/// Thrown by the readers of this folder and caught at their public operations; the text is the place and the
/// reason.
class DocumentRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    DocumentRefused(const std::string& refusedPlace, const std::string& refusedReason)
        : std::runtime_error(refusedPlace + ": " + refusedReason), where(refusedPlace), why(refusedReason) {}

    // For readers that go on without the thing refused; empty where the two weren't told apart.

    [[nodiscard]] const std::string& place() const { return where; }
    [[nodiscard]] const std::string& reason() const { return why; }

private:
    std::string where;
    std::string why;
};

}  // namespace mero
