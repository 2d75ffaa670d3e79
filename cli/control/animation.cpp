#include "cli/control/animation.h"

#include <cmath>

#include "cli/text/failure.h"
#include "cli/text/number_text.h"

namespace vellumtide::cli {
namespace {

constexpr const char* kKeyForm =
    "expected NAME@FRAME=VALUE, where FRAME is 12, 12.5 or 0.5s (seconds), with :hold or :linear "
    "behind it where wanted";

[[noreturn]] void fail(const std::string& where, const std::string& reason) {
  throw Failure(ExitStatus::Usage, where + ": " + reason);
}

constexpr double kFarthestFrame = 1e9;

// A time in seconds that falls on a frame but for rounding is that frame.
double frameOf(KeyTime time, PF_RationalScale framesPerSecond) {
  if (!time.inSeconds) return time.value;
  constexpr double kTolerance = 1e-6;
  const double frame = time.value * framesPerSecond.num / framesPerSecond.den;
  return std::abs(frame - std::round(frame)) < kTolerance ? std::round(frame) : frame;
}

struct TimeAndValue {
  KeyTime time;
  std::optional<Interpolation> interpolation;
  std::string value;
};

// FRAME [ ":" interpolation ] "=" VALUE
std::optional<TimeAndValue> parseTimeAndValue(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return {};
  const std::string_view left = text.substr(0, equals);
  const std::size_t colon = left.find(':');
  const std::optional<KeyTime> time = parseKeyTime(left.substr(0, colon));
  if (!time) return {};
  TimeAndValue result{*time, {}, std::string(text.substr(equals + 1))};
  if (colon != std::string_view::npos) {
    result.interpolation = parseInterpolation(left.substr(colon + 1));
    if (!result.interpolation) return {};
  }
  return result;
}

}  // namespace

void Animation::addKey(const std::string& option) {
  for (std::size_t at = option.find('@'); at != std::string::npos; at = option.find('@', at + 1)) {
    if (at > 0 && parseTimeAndValue(std::string_view(option).substr(at + 1))) {
      options_.push_back(option);
      return;
    }
  }
  fail("-k " + option, kKeyForm);
}

void Animation::addFile(const std::filesystem::path& file) {
  const std::vector<KeyText> keys = readKeyFile(file);
  keys_.insert(keys_.end(), keys.begin(), keys.end());
}

// A name may hold "@", "=" and ":" itself.
KeyText Animation::resolve(const std::string& option) const {
  const std::string where = "-k " + option;
  std::string unknown;
  for (std::size_t at = option.find('@'); at != std::string::npos; at = option.find('@', at + 1)) {
    const std::string name = option.substr(0, at);
    const auto key = parseTimeAndValue(std::string_view(option).substr(at + 1));
    if (!key) continue;
    if (panel_->find(name).count > 0) {
      return {where, name, key->time, key->interpolation, key->value};
    }
    if (unknown.empty()) unknown = name;
  }
  panel_->failUnknown(unknown, where);
}

void Animation::addToTracks(const KeyText& text, PF_RationalScale framesPerSecond) {
  const double frame = text.time ? frameOf(*text.time, framesPerSecond) : 0;
  if (std::abs(frame) > kFarthestFrame) fail(text.where, "expected a time within 1e9 frames");
  const ControlPanel::Target target = panel_->find(text.control);
  if (target.count == 0) panel_->failUnknown(text.control, text.where);
  for (const ControlValue& value : panel_->parse(target, text.value, text.where)) {
    const headless::Control& control = panel_->control(value.control);
    const std::string sort = switchName(control);
    if (!sort.empty() && text.interpolation == Interpolation::Linear) {
      fail(text.where, sort + " has nothing between its values; expected hold");
    }
    if (panel_->isSet(value.control)) {
      fail(text.where, "\"" + control.label + "\" is set with -p, too");
    }
    Track& track = tracks_[value.control];
    if (!track.keys.empty() && (track.isConstant || !text.time)) {
      fail(text.where, "\"" + control.label + "\" is a constant and has other keys, too (" +
                           track.keys.begin()->second.where + ")");
    }
    track.isConstant = !text.time;
    const bool holds = !sort.empty() || text.interpolation == Interpolation::Hold;
    const auto [key, isNew] = track.keys.try_emplace(frame, Key{value, holds, text.where});
    if (!isNew) {
      fail(text.where, "\"" + control.label + "\" has another key at frame " +
                           numberText(static_cast<float>(frame)) + " (" + key->second.where + ")");
    }
  }
}

void Animation::bind(ControlPanel& panel, PF_RationalScale framesPerSecond,
                     const std::function<void(const Failure&)>& misfit) {
  panel_ = &panel;
  tracks_.clear();
  const auto attempt = [&](const auto& add) {
    try {
      add();
    } catch (const Failure& failure) {
      if (!misfit) throw;
      misfit(failure);
    }
  };
  for (const KeyText& key : keys_)
    attempt([&] { addToTracks(key, framesPerSecond); });
  for (const std::string& option : options_)
    attempt([&] { addToTracks(resolve(option), framesPerSecond); });
}

ControlValue Animation::valueAt(const Track& track, double frame) {
  const auto after = track.keys.upper_bound(frame);
  if (after == track.keys.begin()) return after->second.value;
  const auto before = std::prev(after);
  ControlValue value = before->second.value;
  if (after == track.keys.end() || before->second.holds) return value;
  const double share = (frame - before->first) / (after->first - before->first);
  for (std::size_t i = 0; i < value.parts.size(); ++i)
    value.parts[i] += share * (after->second.value.parts[i] - value.parts[i]);
  return value;
}

void Animation::apply(double frame) const {
  for (const auto& [control, track] : tracks_)
    panel_->put(valueAt(track, frame));
}

}  // namespace vellumtide::cli
