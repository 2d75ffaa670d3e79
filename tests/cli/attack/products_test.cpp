// Every option that names a file to write, times every kind of thing that the name can lead to.
#include <deque>
#include <vector>

#include "attack.h"

namespace vellumtide::cli {
namespace {

using By = Attack::By;

// "$T" stands for the file in the command, "@" for its ending.
struct Option {
  const char* name;
  const char* ending;
  const char* command;
  const char* input;          // what it reads
  int done = 0, refused = 4;  // statuses
  const char* beside = "";    // what a command that can write changes as well
  const char* setUp = "";
};

const Option kOptions[] = {
    {"Picture", "png", "$V render k.pbk -i in.png -o $T", "in.png"},
    {"Report", "json", "$V render k.pbk -i in.png -o a.png --report $T", "k.pbk", 0, 1, "+a.png "},
    {"Drawing", "dot", "$V inspect k.pbk --graph dot -o $T", "k.pbk"},
    {"Sheet", "png", "$V sheet in.png b.png -o $T", "b.png"},
    {"Difference", "png", "$V compare in.png b.png -o $T", "b.png", 1},
    {"Project", "json", "$V project new $T k.pbk -i in.png", "k.pbk", 0, 1},
    {"ProjectPicture", "png", "$V project render p.json -o $T", "in.png", 0, 4, "",
     "$V project new p.json k.pbk -i in.png"},
};

struct Target {
  enum class End { Written, RefusedAtOnce, RefusedAtLast, Usage };

  const char* name;
  const char* setUp;  // $I is what the command reads
  const char* path;
  End end;
  const char* message;  // or, when written, the changes
  By by = By::Both;
  const char* around = "C; S=$?";  // C is the command, S its status
};

using End = Target::End;
const Target kTargets[] = {
    {"NewFile", "", "t.@", End::Written, "+t.@ "},
    {"OldFile", "touch t.@; chmod 640 t.@", "t.@", End::Written, "~t.@ "},
    {"Link", "touch sub/r.@; ln -s sub/r.@ t.@", "t.@", End::Written, "~sub/r.@ "},
    {"LinkToNothingYet", "ln -s sub/r.@ t.@", "t.@", End::Written, "+sub/r.@ "},
    {"Circle", "ln -s u.@ t.@; ln -s t.@ u.@", "t.@", End::RefusedAtOnce, "lead in a circle"},
    {"Folder", "mkdir t.@", "t.@", End::RefusedAtOnce, "it is a folder"},
    {"NoFolder", "", "no/t.@", End::RefusedAtOnce, "there is no folder no"},
    {"Pipe", "mkfifo t.@", "t.@", End::Written, "+got ", By::Both,
     "timeout 20 cat t.@ >got & C; S=$?; wait; test -s got || S=99"},
    {"Device", "ln -s /dev/null t.@", "t.@", End::Written, "", By::Ordinary},
    {"FullDevice", "ln -s /dev/full t.@", "t.@", End::RefusedAtLast, "No space left on device",
     By::Ordinary},
    {"FullDisk", "mkdir full", "full/t.@", End::RefusedAtLast, "No space left on device", By::Root,
     "mount -t tmpfs -o size=64k none full || exit 98; head -c 99999 /dev/zero >full/a 2>&-; C; "
     "S=$?; test \"$(ls -A full)\" = a || S=99; umount full"},
    {"BlockDevice", "mknod t.@ b 240 240", "t.@", End::RefusedAtOnce, "it is a block device",
     By::Root},
    {"ProtectedFile", "touch t.@; chmod 444 t.@", "t.@", End::RefusedAtOnce, "Permission denied",
     By::Ordinary},
    {"ProtectedFolder", "chmod 555 sub", "sub/t.@", End::RefusedAtOnce, "takes no new file",
     By::Ordinary},
    {"TooLongName", "", "$(printf %0300d 1).@", End::RefusedAtOnce, "File name too long"},
    {"InputByHardLink", "ln $I t.@", "t.@", End::Usage, "would overwrite the "},
    {"InputByLinkedFolder", "ln $I t.@; ln -s . l", "l/t.@", End::Usage, "would overwrite the "},
};

std::string replaced(std::string text, const std::string& what, const std::string& by) {
  for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
  return text;
}

const char* kept(const std::string& text) {
  static std::deque<std::string> texts;
  return texts.emplace_back(text).c_str();
}

Attack attackOf(const Option& option, const Target& target) {
  const auto with = [&](const std::string& text) {
    return replaced(replaced(text, "@", option.ending), "$I", option.input);
  };
  const bool isWritten = target.end == End::Written;
  const std::string command = replaced(option.command, "$T", with(target.path));
  std::string changes;  // in the order of their names
  if (isWritten || target.end == End::RefusedAtLast) changes = option.beside;
  if (isWritten) changes += with(target.message);
  return {.name = kept(std::string(option.name) + target.name),
          .setUp = kept(std::string(option.setUp) + "\n" + with(target.setUp)),
          .command = kept(replaced(with(target.around), "C;", command + ";") + "; exit $S"),
          .status = isWritten                  ? option.done
                    : target.end == End::Usage ? 2
                                               : option.refused,
          .message = isWritten ? (option.done == 0 ? "" : "differ in") : target.message,
          .changes = kept(changes),
          .by = target.by};
}

std::vector<Attack> product() {
  std::vector<Attack> rows;
  for (const Option& option : kOptions) {
    for (const Target& target : kTargets)
      rows.push_back(attackOf(option, target));
  }
  return rows;
}

INSTANTIATE_TEST_SUITE_P(Products, AttackTest, testing::ValuesIn(product()), attackName);

}  // namespace
}  // namespace vellumtide::cli
