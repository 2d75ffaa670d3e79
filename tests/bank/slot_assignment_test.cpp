#include "bank/slot_assignment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bank/control_labels.h"

namespace vellumtide {
namespace {

using testing::ElementsAre;

struct Run {
  pbElementType type;
  int times = 1;
  pbUIControl control = pbUIControl::None;
  pbParameterType parameterType = pbParameterType::None;
};

std::vector<int> assign(std::initializer_list<Run> runs) {
  std::vector<pbParameter> parameters;
  for (const Run& run : runs) {
    pbParameter parameter(run.type, "p");
    parameter.aeUIControl = run.control;
    parameter.parameterType = run.parameterType;
    parameters.insert(parameters.end(), static_cast<std::size_t>(run.times), parameter);
  }
  std::vector<const pbParameter*> pointers;
  for (const pbParameter& parameter : parameters)
    pointers.push_back(&parameter);
  return assignParameterSlots(pointers);
}

TEST(SlotAssignment, EachKindGoesToItsBank) {
  using E = pbElementType;
  using C = pbUIControl;
  using P = pbParameterType;
  EXPECT_THAT(assign({{E::Bool3}, {E::Int2}, {E::Float3x3}, {E::Pixel4}, {E::Bool}}),
              ElementsAre(4, 34, 44, 53, 7));
  // The control comes before the meaning, the meaning before the element type.
  EXPECT_THAT(assign({{E::Int, 1, C::Popup},
                      {E::Float, 1, C::Angle},
                      {E::Float4, 1, C::PercentSlider, P::ColorRGBA},
                      {E::Float, 1, C::OneChannelColor},
                      {E::Float2, 1, C::Point},
                      {E::Float4, 1, C::Color}}),
              ElementsAre(24, 104, 44, 45, 94, 114));
  EXPECT_THAT(assign({{E::Float, 1, C::None, P::AngleDegrees},
                      {E::Float2, 1, C::None, P::Position},
                      {E::Float3, 1, C::None, P::ColorRGB},
                      {E::Float4, 1, C::None, P::ColorRGBA},
                      {E::Int, 1, C::None, P::Enum}}),
              ElementsAre(104, 94, 114, 115, 24));
  EXPECT_THAT(assign({{E::Float, 1, C::None, P::AngleRadians},
                      {E::Float3, 1, C::None, P::ColorLAB},
                      {E::String},
                      {E::Image4}}),
              ElementsAre(44, 45, -1, -1));
}

TEST(SlotAssignment, WhatDoesNotFitLeavesTheRoomToLaterOnes) {
  using E = pbElementType;
  std::vector<int> slots = assign({{E::Bool, 21}});
  EXPECT_EQ(slots[19], 23);
  EXPECT_EQ(slots[20], -1);
  slots = assign({{E::Float4x4}, {E::Float, 40}});
  EXPECT_EQ(slots[1], 60);
  EXPECT_EQ(slots[34], 93);
  EXPECT_EQ(slots[35], -1);
  EXPECT_THAT(assign({{E::Float4x4, 3}, {E::Float3}, {E::Float2}, {E::Float}}),
              ElementsAre(44, 60, 76, -1, 92, -1));
}

TEST(SlotAssignment, LayersTakeTheFirstFour) {
  EXPECT_EQ(inputSlot(0), 0);
  EXPECT_EQ(inputSlot(3), 3);
  EXPECT_EQ(inputSlot(4), -1);
}

TEST(ControlLabels, NamesAndComponents) {
  pbParameter parameter(pbElementType::Float3, "vector");
  EXPECT_EQ(controlLabel(parameter, 2, 3), "vector z");
  EXPECT_EQ(controlLabel(parameter, 0, 1), "vector");
  parameter.displayName = "Shown";
  EXPECT_EQ(controlLabel(parameter, 0, 3), "Shown x");
  parameter.aeDisplayName = "Shown first";
  EXPECT_EQ(controlLabel(parameter, 1, 3), "Shown first y");
  parameter.type = pbElementType::Float3x3;
  EXPECT_EQ(controlLabel(parameter, 5, 9), "Shown first [1][2]");
  // The component stays readable, and no character is split.
  parameter.aeDisplayName = "aaaaaaaaaaaaaaaaaaaaaa\xC3\xA9zzzzzz";
  EXPECT_EQ(controlLabel(parameter, 0, 9), "aaaaaaaaaaaaaaaaaaaaaa\xC3\xA9 [0][0]");
  parameter.aeDisplayName = "aaaaaaaaaaaaaaaaaaaaaaa\xC3\xA9zzzzz";
  EXPECT_EQ(controlLabel(parameter, 0, 9), "aaaaaaaaaaaaaaaaaaaaaaa [0][0]");
}

// A name's record ends after 31 bytes, within a character or not.
TEST(ControlLabels, EndAtWholeCharacters) {
  const struct {
    std::string name, label;
  } cases[] = {
      {std::string(30, 'a') + "\xC3\xA9", std::string(30, 'a')},
      {std::string(28, 'a') + "\xF0\x9F\x98\x80", std::string(28, 'a')},
      {std::string(29, 'a') + "\xC3\xA9z", std::string(29, 'a') + "\xC3\xA9"},
      {"Filtr\xE9", "Filtr\xE9"},  // another encoding: nothing is lost
      {std::string(40, '\xA9'), std::string(31, '\xA9')},
  };
  for (const auto& c : cases) {
    pbParameter parameter(pbElementType::Float, "p");
    parameter.displayName = c.name;
    EXPECT_EQ(controlLabel(parameter, 0, 1), c.label);
  }
}

TEST(ControlLabels, PopupEntriesStopAtTheHostsListLength) {
  pbParameter parameter;
  parameter.enumValues = "a|b";
  EXPECT_EQ(popupEntries(parameter), "a|b");
  parameter.aePopupString = "x|y|z";
  EXPECT_EQ(popupEntries(parameter), "x|y|z");
  std::string many = "0";
  for (int i = 1; i < 40; ++i)
    many += "|" + std::to_string(i);
  parameter.aePopupString = many;
  EXPECT_EQ(popupEntries(parameter), many.substr(0, many.find("|32")));
}

}  // namespace
}  // namespace vellumtide
