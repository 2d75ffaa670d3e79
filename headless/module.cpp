#include "headless/module.h"

namespace vellumtide::headless {

std::shared_ptr<Module> Module::inProcess(EntryPoint* entryPoint) {
  return std::shared_ptr<Module>(new Module("in process", nullptr, entryPoint));
}

std::string Module::name() const {
  const size_t slash = path_.find_last_of("/\\");
  const std::string file = slash == std::string::npos ? path_ : path_.substr(slash + 1);
  return file.substr(0, file.rfind('.'));
}

}  // namespace vellumtide::headless
