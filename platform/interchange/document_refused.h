#pragma once

#include <stdexcept>

namespace mero {

/// Thrown by the readers of this folder and caught at their public operations; the text is the place and the
/// reason.
class DocumentRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace mero
