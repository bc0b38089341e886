#include "quorl/file/bdoc_container.h"

#include <algorithm>
#include <new>
#include <xxhash.h>
#include <zstd.h>
#include <zstd_errors.h>

#include "quorl/base/string.h"
#include "quorl/file/byte_codec.h"

namespace {

constexpr std::string_view kEndMark("QBDOCEND", 8);
constexpr std::uint64_t kPrefixSize = 40, kEntrySize = 40, kHashSize = 8;
constexpr std::uint64_t kTableAt = 16; // in the prefix
constexpr std::uint32_t kCompressed = 1;
// Drawings are mostly doubles, which higher levels hardly make smaller.
constexpr int kCompressionLevel = 1;

std::uint64_t hashOf(std::string_view bytes) { return XXH64(bytes.data(), bytes.size(), 0); }

std::string hex(std::uint64_t value) { return handleText(ZnDbHandle(value)).utf8(); }

} // namespace

using Quorl::bytePlace;

std::string Quorl::bytePlace(std::uint64_t offset) { return "byte " + std::to_string(offset); }

std::string ZnBdocContainerReader::Section::place() const {
  return bytePlace(offset) + ", " + Quorl::sectionPlace(type, number);
}

std::string Quorl::sectionPlace(ZnSectionType type, size_t number) {
  static constexpr const char* kNames[] = {"header", "classes", "names", "handles", "objects"};
  return std::string("section ") + kNames[static_cast<size_t>(type) - 1] + " " + std::to_string(number);
}

namespace {

// What the library could not get is told as by everybody else.
template<class Context> Context* gotten(Context* context) {
  if (!context) throw std::bad_alloc();
  return context;
}

bool isDone(size_t result) {
  if (ZSTD_isError(result) && ZSTD_getErrorCode(result) == ZSTD_error_memory_allocation)
    throw std::bad_alloc();
  return !ZSTD_isError(result);
}

} // namespace

struct ZnBdocContainerWriter::Codec {
  std::unique_ptr<ZSTD_CCtx, size_t (*)(ZSTD_CCtx*)> context{gotten(ZSTD_createCCtx()), ZSTD_freeCCtx};
};

ZnBdocContainerWriter::ZnBdocContainerWriter(ZnByteSink& sink)
    : sink_(sink)
    , codec_(std::make_unique<Codec>()) {}

ZnBdocContainerWriter::~ZnBdocContainerWriter() = default;

bool ZnBdocContainerWriter::begin() {
  offset_ = kPrefixSize;
  return sink_.write(std::string(kPrefixSize, '\0'));
}

bool ZnBdocContainerWriter::add(ZnSectionType type, std::string_view raw) {
  if (raw.size() > Quorl::kLargestSection) return false;
  stored_.resize(ZSTD_compressBound(raw.size()));
  const size_t size = ZSTD_compressCCtx(codec_->context.get(), stored_.data(), stored_.size(), raw.data(),
                                        raw.size(), kCompressionLevel);
  const bool compressed = isDone(size) && size < raw.size();
  const std::string_view bytes = compressed ? std::string_view(stored_).substr(0, size) : raw;
  ZnByteWriter table(table_);
  table.put(static_cast<std::uint32_t>(type));
  table.put<std::uint32_t>(compressed ? kCompressed : 0);
  for (const std::uint64_t value :
       {offset_, std::uint64_t{bytes.size()}, std::uint64_t{raw.size()}, hashOf(bytes)})
    table.put(value);
  offset_ += bytes.size();
  ++count_;
  return sink_.write(bytes);
}

bool ZnBdocContainerWriter::finish() {
  ZnByteWriter(table_).put(hashOf(table_));
  table_ += kEndMark;
  std::string prefix(Quorl::kBdocMagic);
  ZnByteWriter writer(prefix);
  writer.put(Quorl::kBdocVersion);
  writer.put(count_);
  writer.put(offset_);
  writer.put(offset_ + table_.size());
  writer.put(hashOf(prefix));
  return sink_.write(table_) && sink_.rewrite(0, prefix);
}

struct ZnBdocContainerReader::Codec {
  std::unique_ptr<ZSTD_DCtx, size_t (*)(ZSTD_DCtx*)> context{gotten(ZSTD_createDCtx()), ZSTD_freeDCtx};
};

ZnBdocContainerReader::ZnBdocContainerReader(const ZnByteSource& source)
    : source_(source)
    , codec_(std::make_unique<Codec>()) {}

ZnBdocContainerReader::~ZnBdocContainerReader() = default;

// The version is looked at before anything that another version could have changed.
bool ZnBdocContainerReader::openPrefix(std::uint64_t& tableOffset, std::uint64_t& count, ZnFileError& error) {
  std::string prefix;
  if (source_.size() < kPrefixSize)
    return error.fail(Quorl::eFileDamaged, bytePlace(source_.size()), "the file ends within its prefix",
                      std::to_string(kPrefixSize) + " bytes at least");
  if (!source_.read(0, kPrefixSize, prefix))
    return error.fail(Quorl::eFileAccess, bytePlace(0), "can't be read", "a readable file");
  ZnByteReader reader(prefix);
  if (reader.takeRaw(Quorl::kBdocMagic.size()) != Quorl::kBdocMagic)
    return error.fail(Quorl::eFileDamaged, bytePlace(0), "no drawing file", "the mark of a drawing");
  const auto version = reader.take<std::uint32_t>();
  if (version > Quorl::kBdocVersion)
    return error.fail(Quorl::eNewerVersion, bytePlace(Quorl::kBdocMagic.size()),
                      "format version " + std::to_string(version),
                      std::to_string(Quorl::kBdocVersion) + " at most");
  count = reader.take<std::uint32_t>();
  tableOffset = reader.take<std::uint64_t>();
  const auto length = reader.take<std::uint64_t>();
  const size_t hashed = reader.position();
  const auto said = reader.take<std::uint64_t>();
  const std::uint64_t hash = hashOf(std::string_view(prefix).substr(0, hashed));
  if (said != hash)
    return error.fail(Quorl::eFileDamaged, bytePlace(hashed), "the checksum of the prefix is " + hex(hash),
                      hex(said));
  if (version == 0)
    return error.fail(Quorl::eFileDamaged, bytePlace(Quorl::kBdocMagic.size()), "format version 0",
                      "1 or more");
  if (length != source_.size())
    return error.fail(Quorl::eFileDamaged, bytePlace(source_.size()),
                      "the file ends after " + std::to_string(source_.size()) + " bytes",
                      std::to_string(length) + " bytes");
  // No sum here can overflow: the count has 32 bits, and the offset is compared first.
  const std::uint64_t tableSize = count * kEntrySize + kHashSize + kEndMark.size();
  if (tableOffset < kPrefixSize || tableOffset > length || length - tableOffset != tableSize)
    return error.fail(Quorl::eFileDamaged, bytePlace(kTableAt),
                      "a section table at " + std::to_string(tableOffset),
                      "a place " + std::to_string(tableSize) + " bytes before the end");
  return true;
}

bool ZnBdocContainerReader::open(ZnFileError& error) {
  std::uint64_t tableOffset = 0, count = 0;
  if (!openPrefix(tableOffset, count, error)) return false;
  std::string table;
  if (!source_.read(tableOffset, source_.size() - tableOffset, table))
    return error.fail(Quorl::eFileAccess, bytePlace(tableOffset), "can't be read", "a readable file");
  if (!table.ends_with(kEndMark))
    return error.fail(Quorl::eFileDamaged, bytePlace(source_.size() - kEndMark.size()), "no end mark",
                      "the end mark");
  const std::string_view entries = std::string_view(table).substr(0, count * kEntrySize);
  ZnByteReader hash(std::string_view(table).substr(entries.size()));
  const auto said = hash.take<std::uint64_t>();
  if (said != hashOf(entries))
    return error.fail(Quorl::eFileDamaged, bytePlace(tableOffset),
                      "the checksum of the section table is " + hex(hashOf(entries)), hex(said));
  for (std::uint64_t i = 0; i < count; ++i)
    if (!openSection(entries.substr(i * kEntrySize, kEntrySize), tableOffset, error)) return false;
  const std::uint64_t end =
      sections_.empty() ? kPrefixSize : sections_.back().offset + sections_.back().storedSize;
  if (end != tableOffset)
    return error.fail(Quorl::eFileDamaged, bytePlace(end), "bytes between the sections and their table",
                      "the table at once");
  return true;
}

bool ZnBdocContainerReader::openSection(std::string_view entry, std::uint64_t tableOffset,
                                        ZnFileError& error) {
  const size_t number = sections_.size();
  const std::string place =
      bytePlace(tableOffset + number * kEntrySize) + ", section table entry " + std::to_string(number + 1);
  ZnByteReader reader(entry);
  const auto type = reader.take<std::uint32_t>(), flags = reader.take<std::uint32_t>();
  Section section;
  for (std::uint64_t* value : {&section.offset, &section.storedSize, &section.rawSize, &section.hash})
    *value = reader.take<std::uint64_t>();
  if (type < static_cast<std::uint32_t>(ZnSectionType::kHeader) ||
      type > static_cast<std::uint32_t>(ZnSectionType::kObjects))
    return error.fail(Quorl::eFileDamaged, place, "section type " + std::to_string(type), "1 to 5");
  if (flags > kCompressed)
    return error.fail(Quorl::eFileDamaged, place, "flags " + std::to_string(flags), "0 or 1");
  section.type = static_cast<ZnSectionType>(type);
  section.compressed = flags == kCompressed;
  if (!checkSection(section, tableOffset, place, error)) return false;
  append(section);
  return true;
}

size_t ZnBdocContainerReader::numberWithinType(ZnSectionType type) const {
  for (size_t i = sections_.size(); i-- > 0;)
    if (sections_[i].type == type) return sections_[i].number + 1;
  return 1;
}

void ZnBdocContainerReader::append(Section section) {
  section.number = numberWithinType(section.type);
  if (!sections_.empty()) section.rawBefore = sections_.back().rawBefore + sections_.back().rawSize;
  sections_.push_back(section);
}

// Sections follow one another without gaps, and none is larger than what memory may be given to.
bool ZnBdocContainerReader::checkSection(const Section& section, std::uint64_t tableOffset,
                                         const std::string& place, ZnFileError& error) const {
  const std::uint64_t expected =
      sections_.empty() ? kPrefixSize : sections_.back().offset + sections_.back().storedSize;
  if (section.offset != expected || section.storedSize > tableOffset - section.offset)
    return error.fail(
        Quorl::eFileDamaged, place,
        "bytes " + std::to_string(section.offset) + " on, " + std::to_string(section.storedSize),
        "to begin at " + std::to_string(expected) + " and to end before " + std::to_string(tableOffset));
  if (section.rawSize > Quorl::kLargestSection ||
      (!section.compressed && section.rawSize != section.storedSize))
    return error.fail(Quorl::eFileDamaged, place, "a raw size of " + std::to_string(section.rawSize),
                      section.compressed ? std::to_string(Quorl::kLargestSection) + " at most"
                                         : std::to_string(section.storedSize));
  if (!isWithinMeasure(section))
    return error.fail(Quorl::eFileDamaged, place, "sections that expand beyond all measure",
                      "a thousand times the file at most");
  return true;
}

// Drawings become a tenth or a hundredth; a small file that would fill the memory was made to do that.
bool ZnBdocContainerReader::isWithinMeasure(const Section& section) const {
  constexpr std::uint64_t kAlwaysAllowed = 16 << 20, kMostTimes = 1000;
  std::uint64_t raw = section.rawSize;
  if (!sections_.empty()) raw += sections_.back().rawBefore + sections_.back().rawSize;
  return raw <= std::max(kAlwaysAllowed, kMostTimes * source_.size());
}

bool ZnBdocContainerReader::read(const Section& section, std::string& raw, ZnFileError& error) {
  std::string& target = section.compressed ? stored_ : raw;
  if (!source_.read(section.offset, section.storedSize, target))
    return error.fail(Quorl::eFileAccess, section.place(), "can't be read", "a readable file");
  const std::uint64_t hash = hashOf(target);
  if (hash != section.hash)
    return error.fail(Quorl::eFileDamaged, section.place(), "its checksum is " + hex(hash),
                      hex(section.hash));
  return !section.compressed || expand(section, raw, error);
}

// The frame must say the size that the table says before memory is given to it.
bool ZnBdocContainerReader::expand(const Section& section, std::string& raw, ZnFileError& error) {
  const unsigned long long said = ZSTD_getFrameContentSize(stored_.data(), stored_.size());
  bool good = said == section.rawSize;
  if (good) {
    raw.resize(section.rawSize);
    const size_t size =
        ZSTD_decompressDCtx(codec_->context.get(), raw.data(), raw.size(), stored_.data(), stored_.size());
    good = isDone(size) && size == section.rawSize;
  }
  return good || error.fail(Quorl::eFileDamaged, section.place(), "can't be expanded",
                            std::to_string(section.rawSize) + " bytes");
}
