#include "host/parameter_refresh.h"

#include <vector>

#include "bank/slot_assignment.h"

namespace vellumtide {
namespace {

constexpr double kFixedToFloat = 1.52587890625e-5;  // 1 / 65536

float fixedToFloat(PF_Fixed value) {
  return static_cast<float>(value * kFixedToFloat);
}

// Full-resolution layer coordinates, whatever the preview's resolution.
float pointToFloat(PF_Fixed value, const PF_RationalScale& downsample) {
  const double factor = static_cast<double>(downsample.num) / downsample.den;
  return static_cast<float>(value * kFixedToFloat / factor);
}

void readColor(const PF_Pixel& color, int components, ValueCells& value) {
  const A_u_char channels[] = {color.red, color.green, color.blue, color.alpha};
  for (int i = 0; i < components; ++i) {
    value.setFloat(static_cast<std::size_t>(i), static_cast<float>(channels[i] / 255.0));
  }
}

void readRun(ParameterCheckout& holder, int slot, const ControlNeed& need, ValueCells& value) {
  for (int i = 0; i < need.count; ++i) {
    const PF_ParamDefUnion& control = holder.checkout(slot + i).u;
    const auto component = static_cast<std::size_t>(i);
    if (need.bank == Bank::Slider) value.setInt(component, control.sd.value);
    if (need.bank == Bank::Fixed) value.setFloat(component, fixedToFloat(control.fd.value));
    if (need.bank == Bank::Checkbox) value.setBool(component, control.bd.value != 0);
  }
}

}  // namespace

void refreshParameterValue(ParameterCheckout& holder, pbGraphParameter& record) {
  if (record.slot < 0) return;
  const PF_InData& in = holder.inData();
  const ControlNeed need = controlNeed(record.parameter);
  ValueCells value;
  switch (need.bank) {
    case Bank::Popup:
      value.setInt(0, holder.checkout(record.slot).u.pd.value - 1);
      break;
    case Bank::Angle:
      value.setFloat(0, fixedToFloat(holder.checkout(record.slot).u.ad.value));
      break;
    case Bank::Point: {
      const PF_PointDef& point = holder.checkout(record.slot).u.td;
      value.setFloat(0, pointToFloat(point.x_value, in.downsample_x));
      value.setFloat(1, pointToFloat(point.y_value, in.downsample_y));
      break;
    }
    case Bank::Color: {
      const bool isRgb = record.parameter.aeUIControl == pbUIControl::None &&
                         record.parameter.parameterType == pbParameterType::ColorRGB;
      readColor(holder.checkout(record.slot).u.cd.value, isRgb ? 3 : 4, value);
      break;
    }
    case Bank::Slider:
    case Bank::Fixed:
    case Bank::Checkbox:
      readRun(holder, record.slot, need, value);
      break;
    case Bank::None:
      break;
  }
  record.value = value;
}

void refreshParameterValues(ParameterCheckout& holder, pbGraph& program) {
  std::vector<ValueCells> values;
  values.reserve(program.parameters.size());
  for (const auto& record : program.parameters) {
    refreshParameterValue(holder, *record);
    values.push_back(record->value);
  }
  for (std::size_t i = 0; i < values.size(); ++i)
    program.parameters[i]->value = values[i];
}

}  // namespace vellumtide
