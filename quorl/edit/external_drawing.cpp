#include "quorl/edit/external_drawing.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "quorl/assoc/action.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/dim_assoc.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/open.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/core/watch_link.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/external_link.h"
#include "quorl/edit/purge.h"
#include "quorl/file/drawing_file.h"

using Quorl::ErrorStatus;
using Ids = ZnArray<ZnDbObjectId>;
namespace fs = std::filesystem;

namespace {

// Of the clones that this makes; nobody else acts on it.
constexpr int kAttachContext = 4;
constexpr const wchar_t* kSeparator = L"|";
constexpr const wchar_t* kBoundSeparator = L"$0$";

bool failed(ZnFileError& error, ErrorStatus status, const std::string& file, const std::string& what) {
  error = {};
  error.file = file;
  return error.fail(status, {}, what);
}

template<class T, class Answer, class Ask> Answer ask(ZnDbObjectId id, Answer absent, Ask&& question) {
  const ZnDbHolder<T> object(id);
  return object.isOpen() ? question(*object) : absent;
}

ZnString nameOf(ZnDbObjectId record) {
  return ask<ZnDbSymbolTableRecord>(record, ZnString(), [](const auto& opened) { return opened.name(); });
}

ZnDbObjectId linkOf(ZnDbObjectId block) {
  return ask<ZnDbBlockTableRecord>(block, ZnDbObjectId(), [](const auto& record) {
    return record.isFromExternalReference() ? ZnDbExternalLink::of(record) : ZnDbObjectId();
  });
}

std::string pathOf(ZnDbObjectId block) {
  return ask<ZnDbExternalLink>(linkOf(block), std::string(),
                               [](const auto& link) { return link.path().utf8(); });
}

fs::path fileOf(const ZnDbDatabase& drawing, const std::string& path) {
  const fs::path beside = fs::path(drawing.fileName().utf8()).parent_path() / path;
  std::error_code ignored;
  return fs::exists(beside, ignored) ? beside : fs::path(path);
}

fs::path wholePath(const fs::path& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(path, error);
  return error ? path : whole;
}

// The files in which one stands in the other, from the drawing that is open on.
using Chain = std::vector<fs::path>;

bool readExternal(const fs::path& file, Chain chain, std::unique_ptr<ZnDbDatabase>& read, ZnFileError& error);

// A block whose content is taken from a file, told in the order in which that happens.
class Loading {
public:
  Loading(ZnDbObjectId block, Chain chain, ZnFileError& error)
      : block_(block)
      , drawing_(*block.database())
      , chain_(std::move(chain))
      , error_(error) {}

  bool run() {
    const std::string path = pathOf(block_);
    std::unique_ptr<ZnDbDatabase> source;
    if (!readExternal(fileOf(drawing_, path), chain_, source, error_)) return false;
    ZnDbTransaction transaction(drawing_);
    collectWatchers();
    ErrorStatus status = eraseContent();
    if (status == Quorl::eOk) status = fill(*source);
    if (status == Quorl::eOk) status = transaction.end();
    return status == Quorl::eOk || failed(error_, status, path, "");
  }

private:
  // Who sees the content from outside; what stands in it goes with it.
  void collectWatchers() {
    std::unordered_set<ZnDbObjectId> content;
    ask<ZnDbExternalLink>(linkOf(block_), false, [&](const ZnDbExternalLink& link) {
      for (const auto& source : link.sources()) {
        content.insert(source.id);
        keys_[source.id] = source.key;
      }
      return true;
    });
    std::set<ZnDbObjectId> watchers; // in an order that is the same on every run
    for (const auto& known : keys_) {
      const ZnDbWatchLink* const first = known.first.slot()->watchers;
      for (const ZnDbWatchLink* link = first; link; link = link->next == first ? nullptr : link->next)
        if (!content.count(link->watcher)) watchers.insert(link->watcher);
    }
    for (const ZnDbObjectId id : watchers) watchers_.append(id);
  }

  // Entities first, then the blocks that only they showed. Layers and styles stay: the user may have set
  // them.
  ErrorStatus eraseContent() {
    Ids blocks;
    std::vector<ZnDbObjectId> ordered;
    for (const auto& known : keys_) ordered.push_back(known.first);
    std::sort(ordered.begin(), ordered.end());
    for (const ZnDbObjectId id : ordered) {
      if (id.isErased()) continue;
      if (id.isDerivedFrom(ZnDbBlockTableRecord::desc())) blocks.append(id);
      if (!id.isDerivedFrom(ZnDbEntity::desc()) && !id.isDerivedFrom(ZnDbAssocAction::desc())) continue;
      if (const ErrorStatus status = erase(id); status != Quorl::eOk) return status;
    }
    for (int i = blocks.length() - 1; i >= 0; --i)
      if (const ErrorStatus status = erase(blocks[i]); status != Quorl::eOk) return status;
    return Quorl::eOk;
  }

  static ErrorStatus erase(ZnDbObjectId id) {
    ZnDbHolder<ZnDbObject> object;
    const ErrorStatus status = object.openForWrite(id, false, true);
    if (status == Quorl::eWasErased) return Quorl::eOk;
    return status == Quorl::eOk ? object->erase() : status;
  }

  ErrorStatus fill(ZnDbDatabase& source) {
    ZnDbIdMapping mapping(kAttachContext, &source, &drawing_);
    mapping.setNamePrefix(nameOf(block_) + kSeparator, true);
    Ids content;
    ask<ZnDbBlockTableRecord>(source.modelSpaceId(), false, [&](const ZnDbBlockTableRecord& space) {
      for (const ZnDbObjectId id : space.entityIds())
        if (!id.isErased()) content.append(id);
      return true;
    });
    if (!content.isEmpty())
      if (const ErrorStatus status = source.deepCloneObjects(content, block_, mapping); status != Quorl::eOk)
        return status;
    const std::unordered_map<ZnDbObjectId, ZnString> nested = nestedKeys(source);
    std::vector<ZnDbExternalLink::Source> sources;
    std::unordered_map<std::wstring, ZnDbObjectId> byKey;
    for (const ZnDbIdPair& pair : mapping.pairs()) {
      if (!pair.isCloned()) continue;
      const auto known = nested.find(pair.key());
      const ZnString key = known != nested.end() ? known->second : handleText(pair.key().handle());
      sources.push_back({key, pair.value()});
      byKey.emplace(std::wstring(key.view()), pair.value());
    }
    lead(byKey);
    ZnDbHolder<ZnDbExternalLink> link;
    if (const ErrorStatus status = link.openForWrite(linkOf(block_)); status != Quorl::eOk) return status;
    link->setIsUnloaded(false);
    link->setSources(std::move(sources));
    return Quorl::eOk;
  }

  // What the source shows of further drawings is known by its place there.
  static std::unordered_map<ZnDbObjectId, ZnString> nestedKeys(const ZnDbDatabase& source) {
    std::unordered_map<ZnDbObjectId, ZnString> keys;
    for (const ZnDbExternalDrawing& nested : zndbExternalDrawings(source))
      ask<ZnDbExternalLink>(linkOf(nested.block), false, [&](const ZnDbExternalLink& link) {
        for (const auto& object : link.sources()) keys[object.id] = nested.name + kSeparator + object.key;
        return true;
      });
    return keys;
  }

  // What has no successor is left: who watched it finds it erased.
  void lead(const std::unordered_map<std::wstring, ZnDbObjectId>& byKey) {
    const auto led = [&](const ZnDbCompoundObjectId& path) {
      Ids ids;
      path.getFullPath(ids);
      for (ZnDbObjectId& id : ids) {
        const auto known = keys_.find(id);
        if (known == keys_.end()) continue;
        const auto successor = byKey.find(std::wstring(known->second.view()));
        if (successor != byKey.end()) id = successor->second;
      }
      ZnDbCompoundObjectId to;
      to.setFullPath(ids);
      return to;
    };
    for (const ZnDbObjectId watcher : watchers_) {
      ZnDbHolder<ZnDbObject> object;
      if (watcher.isErased() || object.openForWrite(watcher, false, true) != Quorl::eOk) continue;
      if (auto* dependency = ZnDbAssocDependency::cast(object.object())) {
        const ZnDbCompoundObjectId path = led(dependency->compoundObject());
        if (path == dependency->compoundObject()) continue;
        dependency->detachFromObject();
        dependency->attachToObject(path);
      } else if (auto* association = ZnDbDimAssoc::cast(object.object())) {
        std::vector<ZnDbDimAssoc::Reference> references = association->references();
        for (auto& reference : references) reference.path = led(reference.path);
        if (references == association->references()) continue;
        association->setReferences(references);
        association->updateDimension(true, true);
      }
    }
  }

  ZnDbObjectId block_;
  ZnDbDatabase& drawing_;
  Chain chain_;
  ZnFileError& error_;
  std::unordered_map<ZnDbObjectId, ZnString> keys_;
  Ids watchers_;
};

Chain chainOf(const ZnDbDatabase& drawing) {
  if (drawing.fileName().isEmpty()) return {};
  return {wholePath(drawing.fileName().utf8())};
}

bool readExternal(const fs::path& file, Chain chain, std::unique_ptr<ZnDbDatabase>& read,
                  ZnFileError& error) {
  const fs::path whole = wholePath(file);
  if (std::find(chain.begin(), chain.end(), whole) != chain.end()) {
    std::string way;
    for (const fs::path& one : chain) way += one.filename().string() + " > ";
    return failed(error, Quorl::eInvalidOwner, file.string(),
                  "would stand in itself: " + way + whole.filename().string());
  }
  read = zndbOpenDrawing(file.string(), error);
  if (!read) return false;
  chain.push_back(whole);
  for (const ZnDbExternalDrawing& nested : zndbExternalDrawings(*read)) {
    // What is missing there is shown as it was last read.
    if (nested.isUnloaded || nested.isMissing) continue;
    if (!Loading(nested.block, chain, error).run()) return false;
  }
  return true;
}

// Of layers, linetypes, styles and blocks: those that came with the external drawing.
template<class Call>
ErrorStatus forEachDependent(ZnDbDatabase& drawing, const ZnString& prefix, Call&& call) {
  for (const ZnDbObjectId table : {drawing.blockTableId(), drawing.layerTableId(), drawing.linetypeTableId(),
                                   drawing.dimStyleTableId()}) {
    const std::vector<ZnDbObjectId> records = ask<ZnDbSymbolTable>(
        table, std::vector<ZnDbObjectId>(), [](const auto& opened) { return opened.recordIds(); });
    for (const ZnDbObjectId id : records) {
      if (id.isErased() || !nameOf(id).view().starts_with(prefix.view())) continue;
      ZnDbHolder<ZnDbSymbolTableRecord> record;
      ErrorStatus status = record.openForWrite(id);
      if (status == Quorl::eOk) status = call(*record);
      if (status != Quorl::eOk) return status;
    }
  }
  return Quorl::eOk;
}

ErrorStatus makeBlock(ZnDbDatabase& drawing, const ZnString& name, const std::string& path,
                      ZnDbObjectId& block) {
  if (name.view().find(*kSeparator) != std::wstring_view::npos) return Quorl::eInvalidName;
  ZnDbHolder<ZnDbBlockTable> table;
  ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
  ErrorStatus status = record->setName(name);
  if (status == Quorl::eOk) status = table.openForWrite(drawing.blockTableId());
  if (status == Quorl::eOk) status = table->add(block, record.object());
  if (status != Quorl::eOk) return status;
  record->setIsFromExternalReference(true);
  if (status = record->createExtensionDictionary(); status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbDictionary> dictionary;
  if (status = dictionary.openForWrite(record->extensionDictionary()); status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbExternalLink> link(new ZnDbExternalLink);
  link->setPath(ZnString::fromUtf8(path));
  ZnDbObjectId id;
  return dictionary->setAt(ZnDbExternalLink::dictionaryKey(), link.object(), id);
}

ErrorStatus bind(ZnDbObjectId block) {
  const ZnString prefix = nameOf(block) + kSeparator, bound = nameOf(block) + kBoundSeparator;
  ErrorStatus status = forEachDependent(*block.database(), prefix, [&](ZnDbSymbolTableRecord& record) {
    const ZnString name = bound + ZnString(record.name().view().substr(prefix.view().size()));
    ErrorStatus named = record.setName(name);
    for (int number = 1; named == Quorl::eDuplicateKey; ++number)
      named = record.setName(name + L"-" + ZnString(std::to_wstring(number).c_str()));
    return named;
  });
  if (status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbBlockTableRecord> record;
  ZnDbHolder<ZnDbDictionary> dictionary;
  if (status = record.openForWrite(block); status != Quorl::eOk) return status;
  record->setIsFromExternalReference(false);
  if (status = dictionary.openForWrite(record->extensionDictionary()); status != Quorl::eOk) return status;
  return dictionary->remove(ZnDbExternalLink::dictionaryKey());
}

ErrorStatus detach(ZnDbObjectId block) {
  Ids references;
  ask<ZnDbBlockTableRecord>(block, false, [&](const ZnDbBlockTableRecord& record) {
    record.getBlockReferenceIds(references);
    return true;
  });
  for (const ZnDbObjectId id : references) {
    ZnDbHolder<ZnDbEntity> reference;
    ErrorStatus status = reference.openForWrite(id, false, true);
    if (status == Quorl::eOk) status = reference->erase();
    if (status != Quorl::eOk) return status;
  }
  const ZnString prefix = nameOf(block) + kSeparator;
  {
    ZnDbHolder<ZnDbBlockTableRecord> record;
    ErrorStatus status = record.openForWrite(block);
    if (status == Quorl::eOk) status = record->erase();
    if (status != Quorl::eOk) return status;
  }
  // Blocks of it may show one another: those that are shown no longer go first.
  for (bool again = true; again;) {
    again = false;
    const ErrorStatus status =
        forEachDependent(*block.database(), prefix, [&](ZnDbSymbolTableRecord& record) {
          again |= record.erase() == Quorl::eOk;
          return Quorl::eOk;
        });
    if (status != Quorl::eOk) return status;
  }
  return Quorl::eOk;
}

// Another change than reading; all of it or nothing.
template<class Change> bool changeExternal(ZnDbObjectId block, ZnFileError& error, Change&& change) {
  const std::string path = pathOf(block);
  if (linkOf(block).isNull()) return failed(error, Quorl::eInvalidInput, path, "is no external drawing");
  ZnDbTransaction transaction(*block.database());
  ErrorStatus status = change(block);
  if (status == Quorl::eOk) status = transaction.end();
  return status == Quorl::eOk || failed(error, status, path, "");
}

} // namespace

std::vector<ZnDbExternalDrawing> zndbExternalDrawings(const ZnDbDatabase& drawing) {
  std::vector<ZnDbExternalDrawing> found;
  const std::vector<ZnDbObjectId> blocks =
      ask<ZnDbSymbolTable>(drawing.blockTableId(), std::vector<ZnDbObjectId>(),
                           [](const auto& table) { return table.recordIds(); });
  for (const ZnDbObjectId id : blocks) {
    const ZnDbObjectId link = id.isErased() ? ZnDbObjectId() : linkOf(id);
    const ZnString name = nameOf(id);
    if (link.isNull() || name.view().find(*kSeparator) != std::wstring_view::npos) continue;
    ZnDbExternalDrawing external;
    external.block = id;
    external.name = name;
    external.path = pathOf(id);
    external.isUnloaded =
        ask<ZnDbExternalLink>(link, false, [](const auto& opened) { return opened.isUnloaded(); });
    std::error_code ignored;
    external.isMissing = !fs::exists(fileOf(drawing, external.path), ignored);
    found.push_back(external);
  }
  return found;
}

ZnDbObjectId zndbExternalDrawingNamed(const ZnDbDatabase& drawing, const ZnString& name) {
  for (const ZnDbExternalDrawing& external : zndbExternalDrawings(drawing))
    if (external.name.equalsNoCase(name)) return external.block;
  return {};
}

bool zndbAttachDrawing(ZnDbDatabase& drawing, const std::string& path, const ZnString& name,
                       ZnDbObjectId& block, ZnFileError& error) {
  ZnDbTransaction transaction(drawing);
  if (const ErrorStatus status = makeBlock(drawing, name, path, block); status != Quorl::eOk) {
    block.setNull();
    return failed(error, status, path,
                  "can't be attached as \"" + name.utf8() + "\": " + Quorl::errorStatusText(status));
  }
  if (Loading(block, chainOf(drawing), error).run()) return transaction.end() == Quorl::eOk;
  block.setNull();
  return false;
}

bool zndbReloadDrawing(ZnDbObjectId block, ZnFileError& error) {
  if (linkOf(block).isNull()) return failed(error, Quorl::eInvalidInput, {}, "is no external drawing");
  return Loading(block, chainOf(*block.database()), error).run();
}

std::vector<ZnFileError> zndbReloadDrawings(ZnDbDatabase& drawing) {
  std::vector<ZnFileError> errors;
  for (const ZnDbExternalDrawing& external : zndbExternalDrawings(drawing)) {
    ZnFileError error;
    if (!external.isUnloaded && !zndbReloadDrawing(external.block, error)) errors.push_back(error);
  }
  return errors;
}

bool zndbUnloadDrawing(ZnDbObjectId block, ZnFileError& error) {
  return changeExternal(block, error, [](ZnDbObjectId id) {
    ZnDbHolder<ZnDbExternalLink> link;
    const ErrorStatus status = link.openForWrite(linkOf(id));
    if (status == Quorl::eOk) link->setIsUnloaded(true);
    return status;
  });
}

bool zndbBindDrawing(ZnDbObjectId block, ZnFileError& error) { return changeExternal(block, error, bind); }

bool zndbDetachDrawing(ZnDbObjectId block, ZnFileError& error) {
  return changeExternal(block, error, detach);
}
