// What modules ask of the host as a whole: its kind, its documents' kind, its language.
#pragma once

#include "quorl/base/string.h"

// Whether the current document holds drawing views with edge references of their own. Starts false.
bool hostDocumentKindQuery();
void setHostDocumentKind(bool holdsDrawingViews);

// Whether curves of the current document go through logical transforms. Starts false.
bool hostLogicalTransformDocument();
void setHostLogicalTransformDocument(bool on);

// A host of kind 4 has no side for user commands. Starts at 1.
constexpr int kProductWithoutCommands = 4;
int productKind();
void setProductKind(int kind);

// The folder name of the language of texts, to begin with "en-US".
ZnString hostLanguage();
void setHostLanguage(const ZnString& language);

// Puts the folder of the current language's resources into the text, with a separator at its end. When
// there is no such folder beside the host's library, the text stays as it is.
void zndbGetResourceFolder(ZnString& folder);

namespace Quorl {
// The folder of the host's library and that of the running program, without a separator at the end;
// empty when the system doesn't tell.
ZnString libraryFolder();
ZnString programFolder();
} // namespace Quorl
