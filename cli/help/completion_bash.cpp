#include "cli/help/command_tree.h"
#include "cli/help/completion.h"

namespace vellumtide::cli {
namespace {

using Kind = ValueShape::Kind;

// The call that offers what the shape allows.
std::string offer(const ValueShape& shape, const CLI::App& app) {
  switch (shape.kind) {
    case Kind::Choice:
      return "_vellumtide_words " + shellQuoted(joined(shape.choices, " "));
    case Kind::File:
      return "_vellumtide_files " + shellQuoted(joined(shape.endings, " "));
    case Kind::Folder:
      return "_vellumtide_files /";
    case Kind::Control:
      return "_vellumtide_controls " + shellQuoted({shape.mark});
    case Kind::Command:
      return "_vellumtide_words " + shellQuoted(namesOf(commandsOf(app)));
    case Kind::None:
      break;
  }
  return "return";
}

constexpr const char* kFunctions = R"(# Completion of vellumtide for bash.

_vellumtide_reply() {  # the candidates, one a line on standard input
  local candidate start=''
  # What readline replaces begins behind the last of these.
  if [[ -z $quote && $plain == *[=:@]* ]]; then start=${plain%"${plain##*[=:@]}"}; fi
  while IFS= read -r candidate; do
    [[ $candidate == "$plain"* ]] || continue
    candidate=${candidate#"$start"}
    if [[ -n $quote ]]; then COMPREPLY+=("$candidate"); else
      printf -v candidate %q "$candidate"
      COMPREPLY+=("$candidate")
    fi
  done
}

_vellumtide_words() {
  COMPREPLY=($(compgen -W "$1" -- "$plain"))
}

_vellumtide_files() {  # with these endings; '' for any, / for folders alone
  local file
  compopt -o filenames 2>/dev/null
  while IFS= read -r file; do
    [[ -z $1 || " $1 " == *" ${file##*.} "* ]] && COMPREPLY+=("$file")
  done < <(compgen -f -- "$plain")
  [[ -z $1 ]] && return
  while IFS= read -r file; do COMPREPLY+=("$file"); done < <(compgen -d -- "$plain")
}

_vellumtide_controls() {  # of the program on the command line, as the program itself names them
  local word
  for word in "${words[@]:2}"; do
    word=${word//[\"\'\\]/}
    [[ $word == *.pb[kg] ]] || continue
    compopt -o nospace 2>/dev/null
    _vellumtide_reply < <("$program" candidates -- "${word/#\~/$HOME}" "$1" "$plain" 2>/dev/null)
    return
  done
}

_vellumtide() {
  local -a words=()
  local program=$1 word glued='' path previous plain quote='' i
  COMPREPLY=()
  # bash breaks words at = : @, which are nothing special here.
  for ((i = 0; i <= COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    if ((i == COMP_CWORD)) && [[ -z $word && ${COMP_LINE:COMP_POINT-1:1} == ' ' ]]; then glued=''; fi
    if [[ ${#words[@]} -gt 1 && (-n $glued || $word == [=:@]*) ]]; then
      words[${#words[@]} - 1]+=$word
    else
      words+=("$word")
    fi
    if [[ $word == *[=:@] ]]; then glued=yes; else glued=''; fi
  done
  i=$((${#words[@]} - 1))
  plain=${words[i]} previous=${words[i - 1]} path=${words[1]}
  case $plain in
  --*=*) previous=${plain%%=*} plain=${plain#*=} ;;
  [\"\']*) quote=${plain:0:1} plain=${plain:1} ;;
  *) plain=${plain//\\/} ;;
  esac
)";

}  // namespace

std::string bashCompletion(const CLI::App& app) {
  std::string groups, values, flags, arguments;
  for (const CLI::App* command : commandsOf(app)) {
    const std::string names = namesOf(commandsOf(*command));
    if (names.empty()) continue;
    groups += "  " + command->get_name() + ")\n    if ((i == 2)); then _vellumtide_words " +
              shellQuoted(names) + "; return; fi\n    path+=\" ${words[2]}\" ;;\n";
  }
  forEachCommand(app, [&](const std::string& path, const CLI::App& command) {
    std::vector<std::string> all;
    for (const CLI::Option* option : optionsOf(command)) {
      std::vector<std::string> patterns;
      for (const std::string& flag : flagsOf(*option)) {
        all.push_back(flag);
        patterns.push_back("'" + path + " " + flag + "'");
      }
      if (takesValue(*option))
        values +=
            "  " + joined(patterns, " | ") + ") " + offer(shapeOf(*option), app) + "; return ;;\n";
    }
    flags += "    '" + path + "') _vellumtide_words " + shellQuoted(joined(all, " ")) + " ;;\n";
    arguments += "  '" + path + "') " + offer(shapeOfArguments(command), app) + " ;;\n";
  });
  std::vector<std::string> general;
  for (const CLI::Option* option : optionsOf(app)) {
    for (const std::string& flag : flagsOf(*option))
      general.push_back(flag);
  }
  return kFunctions +
         ("  if ((i == 1)) || [[ $path == -* ]]; then\n    if [[ $plain == -* ]]; then "
          "_vellumtide_words " +
          shellQuoted(joined(general, " ")) + "; else _vellumtide_words " +
          shellQuoted(namesOf(commandsOf(app))) + "; fi\n    return\n  fi\n  case $path in\n" +
          groups + "  esac\n  case \"$path $previous\" in\n" + values +
          "  esac\n  if [[ $plain == -* ]]; then\n    case $path in\n" + flags +
          "    esac\n    return\n  fi\n  case $path in\n" + arguments +
          "  esac\n}\ncomplete -F _vellumtide vellumtide\n");
}

}  // namespace vellumtide::cli
