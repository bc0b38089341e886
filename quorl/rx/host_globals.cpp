#include "quorl/rx/host_globals.h"

#include <dlfcn.h>

#include <filesystem>

namespace {

struct HostGlobals {
  bool holdsDrawingViews = false;
  bool logicalTransforms = false;
  int productKind = 1;
  ZnString language = L"en-US";
};

HostGlobals& globals() {
  static HostGlobals* held = new HostGlobals;
  return *held;
}

} // namespace

bool hostDocumentKindQuery() { return globals().holdsDrawingViews; }

void setHostDocumentKind(bool holdsDrawingViews) { globals().holdsDrawingViews = holdsDrawingViews; }

bool hostLogicalTransformDocument() { return globals().logicalTransforms; }

void setHostLogicalTransformDocument(bool on) { globals().logicalTransforms = on; }

int productKind() { return globals().productKind; }

void setProductKind(int kind) { globals().productKind = kind; }

ZnString hostLanguage() { return globals().language; }

void setHostLanguage(const ZnString& language) { globals().language = language; }

void zndbGetResourceFolder(ZnString& folder) {
  const ZnString base = Quorl::libraryFolder();
  if (base.isEmpty() || hostLanguage().isEmpty()) return;
  const ZnString candidate = base + L"/" + hostLanguage();
  std::error_code error;
  if (std::filesystem::is_directory(candidate.utf8(), error)) folder = candidate + L"/";
}

namespace Quorl {

ZnString libraryFolder() {
  Dl_info info{};
  if (!dladdr(reinterpret_cast<void*>(&hostDocumentKindQuery), &info) || !info.dli_fname) return {};
  std::error_code error;
  const auto file = std::filesystem::canonical(info.dli_fname, error);
  return error ? ZnString() : ZnString::fromUtf8(file.parent_path().string());
}

ZnString programFolder() {
  std::error_code error;
  const auto file = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? ZnString() : ZnString::fromUtf8(file.parent_path().string());
}

} // namespace Quorl
