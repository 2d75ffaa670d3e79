#include "pe_file.h"

#include <cstring>
#include <stdexcept>

namespace vellumtide {
namespace {

struct Section {
  uint32_t address, size, offset;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  std::string_view at(std::size_t offset, std::size_t size) const {
    if (offset > bytes_.size() || size > bytes_.size() - offset) {
      throw std::out_of_range("offset " + std::to_string(offset));
    }
    return bytes_.substr(offset, size);
  }

  template <typename T>
  T number(std::size_t offset) const {
    T value;
    std::memcpy(&value, at(offset, sizeof value).data(), sizeof value);
    return value;
  }
  uint16_t u16(std::size_t offset) const { return number<uint16_t>(offset); }
  uint32_t u32(std::size_t offset) const { return number<uint32_t>(offset); }

  std::string text(std::size_t offset) const {
    const std::string_view rest = at(offset, bytes_.size() - offset);
    return std::string(rest.substr(0, rest.find('\0')));
  }

  std::size_t offsetOf(uint32_t address) const {
    for (const Section& section : sections) {
      if (address >= section.address && address - section.address < section.size) {
        return section.offset + (address - section.address);
      }
    }
    throw std::out_of_range("address " + std::to_string(address));
  }

  std::vector<Section> sections;

 private:
  std::string_view bytes_;
};

std::string resourceName(const Reader& file, std::size_t root, uint32_t name) {
  if (!(name & 0x80000000)) return "#" + std::to_string(name);
  const std::size_t offset = root + (name & 0x7FFFFFFF);
  std::string text;
  for (unsigned i = 0; i < file.u16(offset); ++i) {
    text += static_cast<char>(file.u16(offset + 2 + 2 * i));
  }
  return text;
}

// Calls `visit(name, offset)` for each entry of the folder of resources at `folder`.
template <typename Visit>
void eachEntry(const Reader& file, std::size_t root, std::size_t folder, Visit visit) {
  const unsigned count = file.u16(folder + 12) + file.u16(folder + 14);
  for (unsigned i = 0; i < count; ++i) {
    const std::size_t entry = folder + 16 + 8 * i;
    visit(file.u32(entry), root + (file.u32(entry + 4) & 0x7FFFFFFF));
  }
}

// Three levels: type, id, language.
std::vector<PeResource> readResources(const Reader& file, std::size_t root) {
  std::vector<PeResource> resources;
  eachEntry(file, root, root, [&](uint32_t type, std::size_t ids) {
    eachEntry(file, root, ids, [&](uint32_t id, std::size_t languages) {
      eachEntry(file, root, languages, [&](uint32_t language, std::size_t data) {
        const std::string_view bytes = file.at(file.offsetOf(file.u32(data)), file.u32(data + 4));
        resources.push_back({resourceName(file, root, type), id, language, std::string(bytes)});
      });
    });
  });
  return resources;
}

}  // namespace

PeFile readPeFile(std::string_view bytes) {
  Reader file(bytes);
  const std::size_t header = file.u32(0x3C);
  if (file.at(header, 4) != std::string_view("PE\0\0", 4)) throw std::out_of_range("no PE header");
  PeFile pe;
  pe.machine = file.u16(header + 4);
  pe.timestamp = file.u32(header + 8);
  const std::size_t optional = header + 24;
  pe.optionalMagic = file.u16(optional);

  const std::size_t table = optional + file.u16(header + 20);
  for (unsigned i = 0; i < file.u16(header + 6); ++i) {
    const std::size_t entry = table + 40 * i;
    const std::string_view name = file.at(entry, 8);
    pe.sections.emplace_back(name.substr(0, name.find('\0')));
    file.sections.push_back({file.u32(entry + 12), file.u32(entry + 16), file.u32(entry + 20)});
  }

  const auto directory = [&](unsigned index) { return file.u32(optional + 112 + 8 * index); };
  if (directory(0)) {
    const std::size_t exports = file.offsetOf(directory(0));
    const std::size_t names = file.offsetOf(file.u32(exports + 32));
    for (unsigned i = 0; i < file.u32(exports + 24); ++i) {
      pe.exports.push_back(file.text(file.offsetOf(file.u32(names + 4 * i))));
    }
  }
  if (directory(1)) {
    for (std::size_t entry = file.offsetOf(directory(1)); file.u32(entry + 12); entry += 20) {
      pe.importedLibraries.push_back(file.text(file.offsetOf(file.u32(entry + 12))));
    }
  }
  if (directory(2)) pe.resources = readResources(file, file.offsetOf(directory(2)));
  return pe;
}

}  // namespace vellumtide
