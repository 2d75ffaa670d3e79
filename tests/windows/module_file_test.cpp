#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <iterator>
#include <set>

#include "headless/host.h"
#include "pe_file.h"

namespace vellumtide {
namespace {

std::string moduleBytes() {
  std::ifstream file(headless::defaultModulePath(), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string number(uint32_t value, int size = 4) {
  std::string bytes;
  for (int i = 0; i < size; ++i)
    bytes += static_cast<char>(value >> 8 * i & 0xFF);
  return bytes;
}

struct Property {
  std::string key;  // as it reads; the file has it reversed
  std::string data;
};

std::string propertyBytes(const Property& property) {
  const std::string key(property.key.rbegin(), property.key.rend());
  return "MIB8" + key + number(0) + number(static_cast<uint32_t>(property.data.size())) +
         property.data;
}

const PeResource* find(const PeFile& module, const std::string& type) {
  for (const PeResource& resource : module.resources) {
    if (resource.type == type) return &resource;
  }
  return nullptr;
}

TEST(WindowsModule, PropertyListIsWhatTheHostReadsBeforeLoading) {
  using namespace std::string_literals;
  const PeFile module = readPeFile(moduleBytes());
  const PeResource* list = find(module, "PIPL");
  ASSERT_TRUE(list);
  EXPECT_EQ(list->id, 16000u);
  EXPECT_EQ(list->language, 0x409u);

  headless::Host host(headless::Module::load(headless::defaultModulePath()));
  ASSERT_EQ(host.globalSetup(), PF_Err_NONE);
  const headless::CallRecord setup = host.lastCall();
  const auto flags = static_cast<uint32_t>(setup.outFlags);
  const auto flags2 = static_cast<uint32_t>(setup.outFlags2);
  host.finish();

  const Property expected[] = {
      {"kind", "TKFe"},
      {"name", "\012Vellumtide\0"s},
      {"catg", "\011Orrinwald\0\0"s},
      {"8664", "EntryPointFunc\0\0"s},
      {"ePVR", number(2, 2) + number(0, 2)},
      {"eSVR", number(13, 2) + number(0, 2)},
      {"eVER", number(0x80001)},
      {"eINF", number(0)},
      {"eGLO", number(flags)},
      {"eGL2", number(flags2)},
      {"eMNA", "\024Orrinwald_Vellumtide\0\0\0"s},
      {"aeFL", number(0)},
  };
  EXPECT_EQ(flags, 0x06000031u);
  EXPECT_EQ(flags2, 0x00001400u);
  std::string bytes = number(1, 2) + number(0) + number(std::size(expected));
  for (const Property& property : expected)
    bytes += propertyBytes(property);
  EXPECT_EQ(list->bytes, bytes);
}

TEST(WindowsModule, IsA64BitModuleOfSystemLibrariesWithOneExport) {
  const PeFile module = readPeFile(moduleBytes());
  EXPECT_EQ(module.machine, 0x8664);
  EXPECT_EQ(module.optionalMagic, 0x20B);
  EXPECT_EQ(module.exports, std::vector<std::string>{"EntryPointFunc"});
  EXPECT_TRUE(find(module, "#16")) << "version information";
  EXPECT_EQ(std::count(module.sections.begin(), module.sections.end(), ".rsrc"), 1);

  const std::set<std::string> system = {"gdi32.dll",    "glu32.dll",    "kernel32.dll",
                                        "msvcrt.dll",   "opengl32.dll", "user32.dll",
                                        "ucrtbase.dll", "shell32.dll"};
  for (std::string library : module.importedLibraries) {
    for (char& c : library)
      c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_TRUE(system.count(library)) << library;
  }
  EXPECT_FALSE(module.importedLibraries.empty());
}

TEST(WindowsModule, TellsNothingOfTheMachineItWasBuiltOn) {
  const std::string bytes = moduleBytes();
  for (const char* folder : {VELLUMTIDE_SOURCE_FOLDER, VELLUMTIDE_BUILD_FOLDER}) {
    EXPECT_EQ(bytes.find(folder), std::string::npos) << folder;
  }
  EXPECT_EQ(readPeFile(bytes).timestamp, 0u);
}

}  // namespace
}  // namespace vellumtide
