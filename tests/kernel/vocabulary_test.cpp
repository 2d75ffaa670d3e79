#include <gtest/gtest.h>

#include "kernel/kernel_info.h"

namespace vellumtide {
namespace {

TEST(Vocabulary, KeywordsAndNumbersAgreeBothWays) {
  for (int code = 0; code < kElementTypeCount; ++code) {
    const auto type = static_cast<pbElementType>(code);
    EXPECT_EQ(typeFromName(typeName(type)), type) << code;
  }
  EXPECT_EQ(typeFromName("float4x4"), pbElementType{11});
  for (const char* unknown : {"vec2", "Float", "float ", ""}) {
    EXPECT_EQ(typeFromName(unknown), pbElementType::None) << unknown;
  }
  EXPECT_EQ(typeName(pbElementType{25}), "");
  EXPECT_EQ(componentCount(pbElementType{-1}), 0);

  EXPECT_EQ(parameterTypeFromName("time", false), pbParameterType{4});
  EXPECT_EQ(parameterTypeFromName("time", true), pbParameterType{13});
  EXPECT_EQ(parameterTypeFromName("Time", false), pbParameterType::None);
  EXPECT_EQ(uiControlFromName("aeColor"), pbUIControl{6});
}

TEST(Vocabulary, TextFieldsAreCutAndCellsArePacked) {
  const std::string longName(40, 'x');
  pbVariable variable(pbElementType::Int, longName);
  EXPECT_EQ(variable.name, std::string(31, 'x'));
  variable.name = "ab";
  EXPECT_EQ(variable.name, NameText("ab")) << "bytes of the longer text must not stay behind";
  variable.name.assign(nullptr);
  EXPECT_TRUE(variable.name.empty());

  ValueCells cells;
  cells.setBool(0, true);
  cells.setBool(2, true);
  EXPECT_EQ(cells.intAt(0), 0x00010001) << "one byte a component";
  EXPECT_EQ(cells.intAt(1), 0);
}

}  // namespace
}  // namespace vellumtide
