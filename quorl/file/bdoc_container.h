// The binary drawing file as a box of sections; what stands in them is the matter of the drawing's reader and
// writer.
//
//   prefix    magic (8), format version (u32), count of sections (u32), offset of the table (u64), length of
//   the
//             file (u64), xxHash64 of all that (u64)
//   sections  one after another, without gaps
//   table     a section: type (u32), flags (u32, 1 for zstd), offset, stored size, raw size, xxHash64 of the
//             stored bytes (u64 each), in order of offsets; then the xxHash64 of the table
//   end       mark (8)
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quorl/file/byte_stream.h"
#include "quorl/file/file_error.h"

class ZnSalvage;

// The numbers stand in files. A type may have many sections; their contents follow one another.
enum class ZnSectionType : std::uint32_t { kHeader = 1, kClasses, kNames, kHandles, kObjects };

namespace Quorl {
constexpr std::string_view kBdocMagic("QBDOC\r\n\x1a", 8);
constexpr std::uint32_t kBdocVersion = 1;
// Above this a reader would not dare to allocate what a file says.
constexpr std::uint64_t kLargestSection = std::uint64_t{1} << 28;
// "section objects 2", counted from 1 within the type.
std::string sectionPlace(ZnSectionType type, size_t number);
// "byte 40", of the file.
std::string bytePlace(std::uint64_t offset);
} // namespace Quorl

class ZnBdocContainerWriter {
public:
  explicit ZnBdocContainerWriter(ZnByteSink& sink);
  ~ZnBdocContainerWriter();

  // False when the sink took no more, or for a section above the largest; nothing can be added then.
  bool begin();
  bool add(ZnSectionType type, std::string_view raw);
  bool finish();

private:
  struct Codec;
  ZnByteSink& sink_;
  std::unique_ptr<Codec> codec_;
  std::string table_, stored_;
  std::uint64_t offset_ = 0;
  std::uint32_t count_ = 0;
};

class ZnBdocContainerReader {
public:
  struct Section {
    ZnSectionType type{};
    bool compressed = false;
    std::uint64_t offset = 0, storedSize = 0, rawSize = 0, hash = 0;
    std::uint64_t rawBefore = 0; // of all sections before it
    size_t number = 0;           // within its type, from 1

    std::string place() const; // "byte 40, section objects 2"
  };

  explicit ZnBdocContainerReader(const ZnByteSource& source);
  ~ZnBdocContainerReader();

  // Checks prefix, table and end; the sections are checked as they are read.
  bool open(ZnFileError& error);
  const std::vector<Section>& sections() const { return sections_; }
  bool read(const Section& section, std::string& raw, ZnFileError& error);

  // The same where something is damaged, as far as it goes. The table of sections is found by its own
  // checksum; false with the error where it is lost, since nothing else tells sections apart. Of a section
  // come the bytes that could be expanded, though its checksum is wrong: false then.
  bool salvage(ZnSalvage& salvage, ZnFileError& error);
  bool salvage(const Section& section, std::string& raw, ZnSalvage& salvage);

private:
  struct Codec;
  bool openPrefix(std::uint64_t& tableOffset, std::uint64_t& count, ZnFileError& error);
  bool openSection(std::string_view entry, std::uint64_t tableOffset, ZnFileError& error);
  bool checkSection(const Section& section, std::uint64_t tableOffset, const std::string& place,
                    ZnFileError& error) const;
  bool expand(const Section& section, std::string& raw, ZnFileError& error);
  bool isWithinMeasure(const Section& section) const;
  void append(Section section);
  void salvageSection(std::string_view entry);
  size_t numberWithinType(ZnSectionType type) const; // of the section that comes next
  std::string findTable() const;
  void expandStart(std::string& raw, std::uint64_t most);

  const ZnByteSource& source_;
  std::unique_ptr<Codec> codec_;
  std::vector<Section> sections_;
  std::string stored_;
};
