// The options dialog: what the instance's program says about itself, or where its file is.
#pragma once

#include <optional>
#include <string>

#include "services/dialogs/error_log.h"

namespace vellumtide {

// What the dialog may ask of the instance it is opened for, and change in it.
struct InformationHost {
  virtual ~InformationHost() = default;

  // The information text of the instance's program; nothing when it has none that is usable.
  virtual std::optional<std::string> information() = 0;
  // The path the instance remembers; empty when it never had one.
  virtual std::string path() = 0;
  // Loads the program at a path and tells the user what became of it. False without a usable one.
  virtual bool load(const std::string& path) = 0;
  // Makes a loaded path the instance's own and that of every other instance that lost a file of
  // the name `lostName` ("" for none), and has the host save and show what changed. Nothing happens
  // when the instance is gone by now.
  virtual void adopt(const std::string& path, const std::string& lostName) = 0;
};

// Always 0.
PF_Err showInformation(PF_InData* in_data, InformationHost& instance, std::string& errorLog,
                       const DriverStrings& driver);

}  // namespace vellumtide
