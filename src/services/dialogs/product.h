// What the product calls itself in its dialogs.
#pragma once

namespace vellumtide {

constexpr const char* kProductTitle = "Vellumtide";
constexpr const char* kProductVersion = "v 1.2.2";
constexpr const char* kProductYear = "2013";
constexpr const char* kProductMaker = "Orrinwald";
// Of the names that are reserved for examples, until there is a real address.
constexpr const char* kProductPage = "https://vellumtide.example/";
constexpr const char* kAuthorAddress = "vellumtide@orrinwald.example";

}  // namespace vellumtide
