#include <mimalloc.h>

namespace {

/// Many live process instances take more memory than a processor's address buffers cover in small pages, so
/// that each event would wait for several of them. Chosen before `main`, since memory that is there stays as
/// it is.
[[maybe_unused]] const bool chosen = [] {
    mi_option_set_enabled_default(mi_option_large_os_pages, true);
    return true;
}();

}  // namespace
