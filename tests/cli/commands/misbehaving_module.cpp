// Two modules: one whose first call crashes, one whose first call never returns.
#include <unistd.h>

#include <cstdlib>

#include "aeapi/entry_point.h"

extern "C" VELLUMTIDE_EXPORT vellumtide::EntryPoint EntryPointFunc;

vellumtide::PF_Err EntryPointFunc(vellumtide::PF_Cmd, vellumtide::PF_InData*,
                                  vellumtide::PF_OutData*, vellumtide::PF_ParamDef*[],
                                  vellumtide::PF_LayerDef*, void*) {
  while (VELLUMTIDE_HANGS)
    pause();
  std::abort();
}
