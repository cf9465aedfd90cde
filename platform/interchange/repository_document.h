#pragma once

#include <string>
#include <string_view>

#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Adds everything that a repository document (a JSON text, `"format": "mero-repository"`) holds to
/// `repository`. Identifiers are given in the order of the document: a model, its objects, its agents, then
/// the next model; relations come after all of them. References may name what the repository held before.
///
/// Any fault refuses the whole document and takes back what was added; the error then names `source`, the
/// path in the document (or line and column where it isn't JSON) and the reason.
Result<void> readRepositoryDocument(std::string_view text, std::string_view source, Repository& repository);

/// The document that reads back to the same models, objects, agents, relations and values, doubles to the
/// bit. What has its default is left out. Equal repositories give equal texts.
std::string writeRepositoryDocument(const Repository& repository);

}  // namespace mero
