#pragma once

#include <map>
#include <string>

#include "aeapi/effect_data.h"

namespace vellumtide {

class pbGraph;

// The entries that pop-ups were last given; one that is missing has the bank's numbers.
using PopupEntries = std::map<PF_ParamIndex, std::string>;

// What the host was last told of an instance's panel and does not tell itself.
struct PanelMemory {
  std::string title;  // empty: none yet
  PopupEntries entries;
};

// Makes the panel of an instance mirror its program: shows, labels and ranges the controls that the
// program is bound to, hides all others and titles the instance. A null program hides everything.
// `controls` are the host's current definitions; nothing is set that is so already. A refusal does
// not keep the rest from being set; returns the host's first error.
PF_Err updatePanel(PF_InData* in_data, PF_ParamDef* controls[], const pbGraph* program,
                   PanelMemory& memory);

}  // namespace vellumtide
