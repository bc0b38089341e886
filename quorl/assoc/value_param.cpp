#include "quorl/assoc/value_param.h"

#include <algorithm>

#include "quorl/db/core/field_visitor.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/core/tdoc_section.h"

using Quorl::ErrorStatus;

namespace {

constexpr int kExpressionCode = 301, kEvaluatorCode = 302;

// An action that has values at all has about as many as this: growing step by step would copy them four
// times.
constexpr size_t kUsualCount = 16;

// The least that a name and a value can take in a binary file; a count beyond that is damage.
constexpr size_t kLeastBytes = 1;

} // namespace

void ZnDbAssocValueParam::put(int index, const ZnDbAssocValue& value) {
  if (index == 0) {
    first_ = value;
  } else {
    if (!more_) more_ = std::make_unique<Values>();
    if (index == count_)
      more_->push_back(value);
    else
      (*more_)[static_cast<size_t>(index - 1)] = value;
  }
  count_ = std::max(count_, index + 1);
}

void ZnDbAssocValueParam::truncate(int count) {
  count_ = count;
  if (more_) more_->resize(static_cast<size_t>(std::max(count - 1, 0)));
}

const ZnDbAssocValue* ZnDbAssocValueParamList::at(ZnAtom name, int index, ErrorStatus& status) const {
  const ZnDbAssocValueParam* param = find(name);
  if (!param)
    status = Quorl::eKeyNotFound;
  else if (index < 0 || index >= param->count())
    status = Quorl::eOutOfRange;
  else
    return &param->at(index);
  return nullptr;
}

ErrorStatus ZnDbAssocValueParamList::checkPut(ZnAtom name, int index) const {
  if (name.isNull()) return Quorl::eInvalidInput;
  const ZnDbAssocValueParam* param = find(name);
  return index < 0 || index > (param ? param->count() : 0) ? Quorl::eOutOfRange : Quorl::eOk;
}

ZnDbAssocValueParam& ZnDbAssocValueParamList::made(ZnAtom name) {
  for (ZnDbAssocValueParam& param : params_)
    if (param.name() == name) return param;
  if (params_.empty()) params_.reserve(kUsualCount);
  return params_.emplace_back(name);
}

void ZnDbAssocValueParamList::put(ZnAtom name, int index, const ZnDbAssocValue& value) {
  made(name).put(index, value);
}

void ZnDbAssocValueParamList::putArray(ZnAtom name, const std::vector<ZnDbAssocValue>& values) {
  ZnDbAssocValueParam& param = made(name);
  param.truncate(0);
  for (size_t i = 0; i < values.size(); ++i) param.put(static_cast<int>(i), values[i]);
}

bool ZnDbAssocValueParamList::remove(ZnAtom name) {
  const auto found = std::find_if(params_.begin(), params_.end(),
                                  [&](const ZnDbAssocValueParam& param) { return param.name() == name; });
  if (found == params_.end()) return false;
  params_.erase(found);
  return true;
}

template<class Filer> void ZnDbAssocValueParamList::bdocOut(Filer& filer) const {
  filer.writeInt32(static_cast<std::int32_t>(params_.size()));
  for (const ZnDbAssocValueParam& param : params_) {
    filer.writeAtom(param.name());
    filer.writeInt32(param.count());
    for (int i = 0; i < param.count(); ++i) {
      const ZnDbAssocValue& value = param.at(i);
      value.value.bdocOut(filer);
      const bool hasTexts = !value.expression.isEmpty() || !value.evaluatorId.isEmpty();
      filer.writeBool(hasTexts);
      if (!hasTexts) continue;
      filer.writeString(value.expression);
      filer.writeString(value.evaluatorId);
    }
  }
}

template<class Filer> ErrorStatus ZnDbAssocValueParamList::bdocIn(Filer& filer) {
  params_.clear();
  const int names = filer.readCount(kLeastBytes);
  params_.reserve(static_cast<size_t>(names));
  for (int i = 0; i < names && filer.status() == Quorl::eOk; ++i) {
    ZnDbAssocValueParam param(filer.readAtom());
    const int count = filer.readCount(kLeastBytes);
    for (int k = 0; k < count && filer.status() == Quorl::eOk; ++k) {
      ZnDbAssocValue value;
      value.value.bdocIn(filer);
      if (filer.readBool()) {
        value.expression = filer.readString();
        value.evaluatorId = filer.readString();
      }
      param.put(k, value);
    }
    if (filer.status() != Quorl::eOk) break;
    // Two parameters of one name, or one without value, would answer differently from what was written.
    if (param.name().isNull() || param.count() == 0 || find(param.name()))
      filer.setStatus(Quorl::eFileDamaged);
    else
      params_.push_back(std::move(param));
  }
  return filer.status();
}

void ZnDbAssocValueParamList::tdocOut(ZnDbTdocFiler& filer) const {
  for (const ZnDbAssocValueParam& param : params_) {
    filer.writeString(kNameCode, ZnString(param.name()));
    for (int i = 0; i < param.count(); ++i) {
      const ZnDbAssocValue& value = param.at(i);
      if (!value.expression.isEmpty()) filer.writeString(kExpressionCode, value.expression);
      if (!value.evaluatorId.isEmpty()) filer.writeString(kEvaluatorCode, value.evaluatorId);
      value.value.tdocOut(filer);
    }
  }
}

// Texts stand before the value that they belong to.
bool ZnDbAssocValueParamList::tdocIn(ZnDbTdocItems& items) {
  params_.clear();
  ZnAtom name;
  ZnDbAssocValue value;
  for (const ZnDbTdocItem& item : items.all()) {
    if (item.code == kNameCode) {
      name = item.text.atom();
    } else if (item.code == kExpressionCode) {
      value.expression = item.text;
    } else if (item.code == kEvaluatorCode) {
      value.evaluatorId = item.text;
    } else if (!name.isNull() && ZnDbEvalVariant::isTdocCode(item.code)) {
      value.value.tdocIn(item);
      const ZnDbAssocValueParam* param = find(name);
      put(name, param ? param->count() : 0, value);
      value = {};
    }
  }
  return !params_.empty();
}

void ZnDbFieldCodec<ZnDbAssocValueParamList>::show(ZnDbFieldVisitor& visitor, const ZnDbField& field,
                                                   const Raw& list) {
  for (const ZnDbAssocValueParam& param : list.params()) {
    const ZnString name(param.name());
    for (int i = 0; i < param.count(); ++i) {
      ZnDbField seen = field;
      seen.name = name.c_str();
      seen.entry = i;
      param.at(i).value.visit([&](auto value) { visitor.visit(seen, value); });
    }
  }
}

template void ZnDbAssocValueParamList::bdocOut(ZnDbFiler&) const;
template void ZnDbAssocValueParamList::bdocOut(ZnDbMemoryFiler&) const;
template ErrorStatus ZnDbAssocValueParamList::bdocIn(ZnDbFiler&);
template ErrorStatus ZnDbAssocValueParamList::bdocIn(ZnDbMemoryFiler&);
