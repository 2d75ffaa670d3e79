// Every option that names a file to write, against every kind of thing that can stand there.
#include "attack.h"

namespace vellumtide::cli {
namespace {

const Attack kOutputs[] = {
    {.name = "NewFile", .command = "$V render k.pbk -i in.png -o new.png", .changes = "+new.png "},
    {.name = "NoFolder",
     .command = "$V render k.pbk -i in.png -o no/new.png",
     .status = 4,
     .message = "there is no folder no"},
};
INSTANTIATE_TEST_SUITE_P(Outputs, AttackTest, testing::ValuesIn(kOutputs), attackName);

}  // namespace
}  // namespace vellumtide::cli
