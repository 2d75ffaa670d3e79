#include "cli/commands/check_report.h"

#include "bank/slot_assignment.h"
#include "cli/build_errors/build_errors.h"
#include "cli/program/program_file.h"
#include "cli/program/value_notes.h"
#include "cli/session/render_session.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kLayerSide = 16;

void addProgram(Json& report, const Program& program) {
  const ProgramSlots slots = slotsOf(program);
  report["name"] = program.metadata().name.view();
  report["version"] = program.metadata().version;
  report["vendor"] = program.metadata().vendor.view();
  report["inputs"] = Json::array();
  for (std::size_t i = 0; i < program.inputs().size(); ++i) {
    const pbVariable& input = program.inputs()[i];
    report["inputs"].push_back(
        {{"name", input.name.view()}, {"type", typeName(input.type)}, {"slot", slots.inputs[i]}});
  }
  report["parameters"] = Json::array();
  for (std::size_t i = 0; i < program.parameters().size(); ++i) {
    const pbParameter& parameter = program.parameters()[i];
    report["parameters"].push_back({{"name", parameter.name.view()},
                                    {"type", typeName(parameter.type)},
                                    {"slot", slots.parameters[i]},
                                    {"controls", Json::array()}});
  }
}

// Values that count as their author means them, other than they read; no key when there is none.
void addNotes(Json& report, const Program& program) {
  for (const ValueNote& note : valueNotes(program)) {
    report["notes"].push_back({{"line", note.place.line},
                               {"column", note.place.column},
                               {"message", noteText(note, program)}});
  }
}

// The controls that the panel shows for each parameter.
void addControls(Json& report, const Program& program, const headless::Effect& effect) {
  for (std::size_t i = 0; i < program.parameters().size(); ++i) {
    Json& parameter = report["parameters"][i];
    const int slot = parameter["slot"];
    if (slot < 0) continue;
    for (int c = 0; c < controlNeed(program.parameters()[i]).count; ++c) {
      const headless::Control& control = effect.controls().at(slot + c);
      if (control.hidden) continue;
      parameter["controls"].push_back({{"index", control.index}, {"label", control.label}});
    }
  }
}

// Where and why the shaders do not build; keys that are not known are left out.
Json errorsJson(const std::vector<BuildError>& errors) {
  Json list = Json::array();
  for (const BuildError& error : errors) {
    Json item = {{"file", error.file}};
    if (error.place) {
      item["line"] = error.place->line;
      item["column"] = error.place->column;
    }
    item["severity"] = error.isError ? "error" : "warning";
    item["message"] = error.message;
    if (error.nodes.size() == 1) item["node"] = error.nodes.front();
    if (!error.nodes.empty()) item["nodes"] = error.nodes;
    if (error.stages.size() == 1) item["stage"] = stageName(error.stages.front());
    if (error.generatedLine > 0) {
      item["generatedLine"] = error.generatedLine;
      item["generatedText"] = error.generatedText;
    }
    list.push_back(std::move(item));
  }
  return list;
}

// Every line but the first moved in.
std::string indented(const std::string& text) {
  std::string result;
  for (char c : text) {
    result += c;
    if (c == '\n') result += "  ";
  }
  return result;
}

// As the build errors, so that editors find the places.
std::string notesText(const Json& report) {
  std::string text;
  for (const Json& note : report.value("notes", Json::array())) {
    text += harmless(report["file"].get<std::string>()) + ":" +
            std::to_string(note["line"].get<std::size_t>()) + ":" +
            std::to_string(note["column"].get<std::size_t>()) +
            ": note: " + note["message"].get<std::string>() + "\n";
  }
  return text;
}

}  // namespace

Json checkProgram(const std::string& file, const std::string& module) {
  Json report = {{"file", file}, {"ok", false}, {"status", 0}, {"error", ""}};
  try {
    const Program program = readProgram(pathOf(file));
    addProgram(report, program);
    addNotes(report, program);
    std::vector<LayerPicture> pictures;
    pictures.push_back(
        {headless::World(kLayerSide, kLayerSide, PF_PixelFormat_ARGB32), {1, 1}, ""});
    RenderSession session(module, file, program, std::move(pictures));
    addControls(report, program, session.effect());
    session.finish();
    report["ok"] = true;
  } catch (const BuildFailure& failure) {
    report["status"] = static_cast<int>(failure.status);
    report["error"] = failure.what();
    report["errors"] = errorsJson(failure.errors);
  } catch (const std::exception& error) {
    const Failure failure = failureOf(error);
    report["status"] = static_cast<int>(failure.status);
    report["error"] = failure.what();
  }
  return report;
}

Json failureReport(const std::string& file, const Failure& failure) {
  return {{"file", file},
          {"ok", false},
          {"status", static_cast<int>(failure.status)},
          {"error", file + ": " + failure.what()}};
}

std::string reportText(const Json& report) {
  // Editors look for places at the begin of a line.
  if (report.contains("errors")) return "FAILED  " + report["error"].get<std::string>() + "\n";
  if (!report["ok"]) return "FAILED  " + indented(report["error"]) + "\n";
  std::string text = "ok  " + report["file"].get<std::string>() + ": " +
                     report["name"].get<std::string>() + ", version " +
                     std::to_string(report["version"].get<int>());
  const std::string vendor = report["vendor"];
  text += vendor.empty() ? "\n" : ", " + vendor + "\n";
  for (const Json& input : report["inputs"]) {
    const int slot = input["slot"];
    text += "  input " + input["name"].get<std::string>() +
            (slot < 0 ? ": no layer left" : ": layer " + std::to_string(slot)) + "\n";
  }
  for (const Json& parameter : report["parameters"]) {
    text += "  parameter " + parameter["name"].get<std::string>() + ":";
    if (parameter["controls"].empty()) text += " no control";
    for (const Json& control : parameter["controls"]) {
      text += " " + std::to_string(control["index"].get<int>()) + " \"" +
              control["label"].get<std::string>() + "\"";
    }
    text += "\n";
  }
  return text + notesText(report);
}

}  // namespace vellumtide::cli
