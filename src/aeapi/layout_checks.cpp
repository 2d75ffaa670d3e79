// Holds every record, offset and suite slot of the host's binary interface at compile time.
#include <cstddef>

#include "aeapi/aeapi.h"

namespace vellumtide {

#define VT_RECORD(type, size, alignment) \
  static_assert(sizeof(type) == (size) && alignof(type) == (alignment))
#define VT_FIELD(type, field, offset) static_assert(offsetof(type, field) == (offset))
#define VT_SUITE(type, slots) static_assert(sizeof(type) == (slots) * sizeof(void*))
#define VT_SLOT(type, field, slot) static_assert(offsetof(type, field) == (slot) * sizeof(void*))

VT_RECORD(PF_Pixel, 4, 1);
VT_FIELD(PF_Pixel, alpha, 0);
VT_FIELD(PF_Pixel, red, 1);
VT_FIELD(PF_Pixel, green, 2);
VT_FIELD(PF_Pixel, blue, 3);

VT_RECORD(PF_Pixel16, 8, 2);
VT_FIELD(PF_Pixel16, alpha, 0);
VT_FIELD(PF_Pixel16, red, 2);
VT_FIELD(PF_Pixel16, green, 4);
VT_FIELD(PF_Pixel16, blue, 6);

VT_RECORD(PF_PixelFloat, 16, 4);
VT_FIELD(PF_PixelFloat, alpha, 0);
VT_FIELD(PF_PixelFloat, red, 4);
VT_FIELD(PF_PixelFloat, green, 8);
VT_FIELD(PF_PixelFloat, blue, 12);

VT_RECORD(PF_RationalScale, 8, 4);
VT_FIELD(PF_RationalScale, num, 0);
VT_FIELD(PF_RationalScale, den, 4);

VT_RECORD(PF_LRect, 16, 4);
VT_FIELD(PF_LRect, left, 0);
VT_FIELD(PF_LRect, top, 4);
VT_FIELD(PF_LRect, right, 8);
VT_FIELD(PF_LRect, bottom, 12);

VT_RECORD(PF_Point, 8, 4);
VT_FIELD(PF_Point, h, 0);
VT_FIELD(PF_Point, v, 4);

VT_RECORD(PF_SpecVersion, 4, 2);
VT_FIELD(PF_SpecVersion, major, 0);
VT_FIELD(PF_SpecVersion, minor, 2);

VT_RECORD(A_Time, 8, 4);
VT_FIELD(A_Time, value, 0);
VT_FIELD(A_Time, scale, 4);

VT_RECORD(A_Ratio, 8, 4);
VT_FIELD(A_Ratio, num, 0);
VT_FIELD(A_Ratio, den, 4);

VT_RECORD(PF_LayerDef, 120, 8);
VT_FIELD(PF_LayerDef, reserved0, 0);
VT_FIELD(PF_LayerDef, reserved1, 8);
VT_FIELD(PF_LayerDef, world_flags, 16);
VT_FIELD(PF_LayerDef, data, 24);
VT_FIELD(PF_LayerDef, rowbytes, 32);
VT_FIELD(PF_LayerDef, width, 36);
VT_FIELD(PF_LayerDef, height, 40);
VT_FIELD(PF_LayerDef, extent_hint, 44);
VT_FIELD(PF_LayerDef, platform_ref, 64);
VT_FIELD(PF_LayerDef, reserved_long1, 72);
VT_FIELD(PF_LayerDef, reserved_long4, 80);
VT_FIELD(PF_LayerDef, pix_aspect_ratio, 88);
VT_FIELD(PF_LayerDef, reserved_long2, 96);
VT_FIELD(PF_LayerDef, origin_x, 104);
VT_FIELD(PF_LayerDef, origin_y, 108);
VT_FIELD(PF_LayerDef, reserved_long3, 112);
VT_FIELD(PF_LayerDef, dephault, 116);

VT_RECORD(PF_SliderDef, 88, 4);
VT_FIELD(PF_SliderDef, value, 0);
VT_FIELD(PF_SliderDef, value_str, 4);
VT_FIELD(PF_SliderDef, value_desc, 36);
VT_FIELD(PF_SliderDef, valid_min, 68);
VT_FIELD(PF_SliderDef, valid_max, 72);
VT_FIELD(PF_SliderDef, slider_min, 76);
VT_FIELD(PF_SliderDef, slider_max, 80);
VT_FIELD(PF_SliderDef, dephault, 84);

VT_RECORD(PF_FixedSliderDef, 92, 4);
VT_FIELD(PF_FixedSliderDef, value, 0);
VT_FIELD(PF_FixedSliderDef, value_str, 4);
VT_FIELD(PF_FixedSliderDef, value_desc, 36);
VT_FIELD(PF_FixedSliderDef, valid_min, 68);
VT_FIELD(PF_FixedSliderDef, valid_max, 72);
VT_FIELD(PF_FixedSliderDef, slider_min, 76);
VT_FIELD(PF_FixedSliderDef, slider_max, 80);
VT_FIELD(PF_FixedSliderDef, dephault, 84);
VT_FIELD(PF_FixedSliderDef, precision, 88);
VT_FIELD(PF_FixedSliderDef, display_flags, 90);

VT_RECORD(PF_AngleDef, 16, 4);
VT_FIELD(PF_AngleDef, value, 0);
VT_FIELD(PF_AngleDef, dephault, 4);
VT_FIELD(PF_AngleDef, valid_min, 8);
VT_FIELD(PF_AngleDef, valid_max, 12);

VT_RECORD(PF_CheckBoxDef, 16, 8);
VT_FIELD(PF_CheckBoxDef, value, 0);
VT_FIELD(PF_CheckBoxDef, dephault, 4);
VT_FIELD(PF_CheckBoxDef, reserved, 5);
VT_FIELD(PF_CheckBoxDef, reserved1, 6);
VT_FIELD(PF_CheckBoxDef, u, 8);

VT_RECORD(PF_ColorDef, 8, 1);
VT_FIELD(PF_ColorDef, value, 0);
VT_FIELD(PF_ColorDef, dephault, 4);

VT_RECORD(PF_PointDef, 20, 4);
VT_FIELD(PF_PointDef, x_value, 0);
VT_FIELD(PF_PointDef, y_value, 4);
VT_FIELD(PF_PointDef, reserved, 8);
VT_FIELD(PF_PointDef, restrict_bounds, 11);
VT_FIELD(PF_PointDef, x_dephault, 12);
VT_FIELD(PF_PointDef, y_dephault, 16);

VT_RECORD(PF_PopupDef, 16, 8);
VT_FIELD(PF_PopupDef, value, 0);
VT_FIELD(PF_PopupDef, num_choices, 4);
VT_FIELD(PF_PopupDef, dephault, 6);
VT_FIELD(PF_PopupDef, u, 8);

VT_RECORD(PF_FloatSliderDef, 88, 8);
VT_FIELD(PF_FloatSliderDef, value, 0);
VT_FIELD(PF_FloatSliderDef, phase, 8);
VT_FIELD(PF_FloatSliderDef, value_desc, 16);
VT_FIELD(PF_FloatSliderDef, valid_min, 48);
VT_FIELD(PF_FloatSliderDef, valid_max, 52);
VT_FIELD(PF_FloatSliderDef, slider_min, 56);
VT_FIELD(PF_FloatSliderDef, slider_max, 60);
VT_FIELD(PF_FloatSliderDef, dephault, 64);
VT_FIELD(PF_FloatSliderDef, precision, 68);
VT_FIELD(PF_FloatSliderDef, display_flags, 70);
VT_FIELD(PF_FloatSliderDef, fs_flags, 72);
VT_FIELD(PF_FloatSliderDef, curve_tolerance, 76);
VT_FIELD(PF_FloatSliderDef, useExponent, 80);
VT_FIELD(PF_FloatSliderDef, exponent, 84);

VT_RECORD(PF_ParamDefUnion, 120, 8);
VT_FIELD(PF_ParamDefUnion, ld, 0);
VT_FIELD(PF_ParamDefUnion, sd, 0);
VT_FIELD(PF_ParamDefUnion, fd, 0);
VT_FIELD(PF_ParamDefUnion, ad, 0);
VT_FIELD(PF_ParamDefUnion, bd, 0);
VT_FIELD(PF_ParamDefUnion, cd, 0);
VT_FIELD(PF_ParamDefUnion, td, 0);
VT_FIELD(PF_ParamDefUnion, pd, 0);
VT_FIELD(PF_ParamDefUnion, fs_d, 0);

VT_RECORD(PF_ParamDef, 176, 8);
VT_FIELD(PF_ParamDef, uu, 0);
VT_FIELD(PF_ParamDef, ui_flags, 4);
VT_FIELD(PF_ParamDef, ui_width, 8);
VT_FIELD(PF_ParamDef, ui_height, 10);
VT_FIELD(PF_ParamDef, param_type, 12);
VT_FIELD(PF_ParamDef, name, 16);
VT_FIELD(PF_ParamDef, flags, 48);
VT_FIELD(PF_ParamDef, unused, 52);
VT_FIELD(PF_ParamDef, u, 56);

VT_RECORD(AEGP_ColorVal, 32, 8);
VT_FIELD(AEGP_ColorVal, alphaF, 0);
VT_FIELD(AEGP_ColorVal, redF, 8);
VT_FIELD(AEGP_ColorVal, greenF, 16);
VT_FIELD(AEGP_ColorVal, blueF, 24);

VT_RECORD(AEGP_TwoDVal, 16, 8);
VT_FIELD(AEGP_TwoDVal, x, 0);
VT_FIELD(AEGP_TwoDVal, y, 8);

VT_RECORD(AEGP_StreamVal2, 32, 8);
VT_FIELD(AEGP_StreamVal2, four_d, 0);
VT_FIELD(AEGP_StreamVal2, three_d, 0);
VT_FIELD(AEGP_StreamVal2, two_d, 0);
VT_FIELD(AEGP_StreamVal2, one_d, 0);
VT_FIELD(AEGP_StreamVal2, color, 0);
VT_FIELD(AEGP_StreamVal2, arbH, 0);
VT_FIELD(AEGP_StreamVal2, markerP, 0);
VT_FIELD(AEGP_StreamVal2, layer_id, 0);
VT_FIELD(AEGP_StreamVal2, mask_id, 0);
VT_FIELD(AEGP_StreamVal2, mask, 0);
VT_FIELD(AEGP_StreamVal2, text_documentH, 0);

VT_RECORD(AEGP_StreamValue2, 40, 8);
VT_FIELD(AEGP_StreamValue2, streamH, 0);
VT_FIELD(AEGP_StreamValue2, val, 8);

VT_RECORD(PF_InteractCallbacks, 176, 8);
VT_FIELD(PF_InteractCallbacks, checkout_param, 0);
VT_FIELD(PF_InteractCallbacks, checkin_param, 8);
VT_FIELD(PF_InteractCallbacks, add_param, 16);
VT_FIELD(PF_InteractCallbacks, abort, 24);
VT_FIELD(PF_InteractCallbacks, progress, 32);
VT_FIELD(PF_InteractCallbacks, register_ui, 40);
VT_FIELD(PF_InteractCallbacks, checkout_layer_audio, 48);
VT_FIELD(PF_InteractCallbacks, checkin_layer_audio, 56);
VT_FIELD(PF_InteractCallbacks, get_audio_data, 64);
VT_FIELD(PF_InteractCallbacks, reserved_str, 72);
VT_FIELD(PF_InteractCallbacks, reserved, 96);

VT_RECORD(PF_UtilCallbacks, 552, 8);
VT_FIELD(PF_UtilCallbacks, begin_sampling, 0);
VT_FIELD(PF_UtilCallbacks, subpixel_sample, 8);
VT_FIELD(PF_UtilCallbacks, area_sample, 16);
VT_FIELD(PF_UtilCallbacks, get_batch_func_is_deprecated, 24);
VT_FIELD(PF_UtilCallbacks, end_sampling, 32);
VT_FIELD(PF_UtilCallbacks, composite_rect, 40);
VT_FIELD(PF_UtilCallbacks, blend, 48);
VT_FIELD(PF_UtilCallbacks, convolve, 56);
VT_FIELD(PF_UtilCallbacks, copy, 64);
VT_FIELD(PF_UtilCallbacks, fill, 72);
VT_FIELD(PF_UtilCallbacks, gaussian_kernel, 80);
VT_FIELD(PF_UtilCallbacks, iterate, 88);
VT_FIELD(PF_UtilCallbacks, premultiply, 96);
VT_FIELD(PF_UtilCallbacks, premultiply_color, 104);
VT_FIELD(PF_UtilCallbacks, new_world, 112);
VT_FIELD(PF_UtilCallbacks, dispose_world, 120);
VT_FIELD(PF_UtilCallbacks, iterate_origin, 128);
VT_FIELD(PF_UtilCallbacks, iterate_lut, 136);
VT_FIELD(PF_UtilCallbacks, transfer_rect, 144);
VT_FIELD(PF_UtilCallbacks, transform_world, 152);
VT_FIELD(PF_UtilCallbacks, host_new_handle, 160);
VT_FIELD(PF_UtilCallbacks, host_lock_handle, 168);
VT_FIELD(PF_UtilCallbacks, host_unlock_handle, 176);
VT_FIELD(PF_UtilCallbacks, host_dispose_handle, 184);
VT_FIELD(PF_UtilCallbacks, get_callback_addr, 192);
VT_FIELD(PF_UtilCallbacks, app, 200);
VT_FIELD(PF_UtilCallbacks, ansi, 208);
VT_FIELD(PF_UtilCallbacks, colorCB, 368);
VT_FIELD(PF_UtilCallbacks, get_platform_data, 432);
VT_FIELD(PF_UtilCallbacks, host_get_handle_size, 440);
VT_FIELD(PF_UtilCallbacks, iterate_origin_non_clip_src, 448);
VT_FIELD(PF_UtilCallbacks, iterate_generic, 456);
VT_FIELD(PF_UtilCallbacks, host_resize_handle, 464);
VT_FIELD(PF_UtilCallbacks, subpixel_sample16, 472);
VT_FIELD(PF_UtilCallbacks, area_sample16, 480);
VT_FIELD(PF_UtilCallbacks, fill16, 488);
VT_FIELD(PF_UtilCallbacks, premultiply_color16, 496);
VT_FIELD(PF_UtilCallbacks, iterate16, 504);
VT_FIELD(PF_UtilCallbacks, iterate_origin16, 512);
VT_FIELD(PF_UtilCallbacks, iterate_origin_non_clip_src16, 520);
VT_FIELD(PF_UtilCallbacks, get_pixel_data8, 528);
VT_FIELD(PF_UtilCallbacks, get_pixel_data16, 536);
VT_FIELD(PF_UtilCallbacks, reserved, 544);

VT_RECORD(PF_SoundWorld, 32, 8);
VT_FIELD(PF_SoundWorld, fi, 0);
VT_FIELD(PF_SoundWorld, num_samples, 16);
VT_FIELD(PF_SoundWorld, dataP, 24);

VT_RECORD(SPBasicSuite, 56, 8);
VT_FIELD(SPBasicSuite, AcquireSuite, 0);
VT_FIELD(SPBasicSuite, ReleaseSuite, 8);
VT_FIELD(SPBasicSuite, IsEqual, 16);
VT_FIELD(SPBasicSuite, AllocateBlock, 24);
VT_FIELD(SPBasicSuite, FreeBlock, 32);
VT_FIELD(SPBasicSuite, ReallocateBlock, 40);
VT_FIELD(SPBasicSuite, Undefined, 48);

VT_RECORD(PF_InData, 408, 8);
VT_FIELD(PF_InData, inter, 0);
VT_FIELD(PF_InData, utils, 176);
VT_FIELD(PF_InData, effect_ref, 184);
VT_FIELD(PF_InData, quality, 192);
VT_FIELD(PF_InData, version, 196);
VT_FIELD(PF_InData, serial_num, 200);
VT_FIELD(PF_InData, appl_id, 204);
VT_FIELD(PF_InData, num_params, 208);
VT_FIELD(PF_InData, reserved, 212);
VT_FIELD(PF_InData, what_cpu, 216);
VT_FIELD(PF_InData, what_fpu, 220);
VT_FIELD(PF_InData, current_time, 224);
VT_FIELD(PF_InData, time_step, 228);
VT_FIELD(PF_InData, total_time, 232);
VT_FIELD(PF_InData, local_time_step, 236);
VT_FIELD(PF_InData, time_scale, 240);
VT_FIELD(PF_InData, field, 244);
VT_FIELD(PF_InData, shutter_angle, 248);
VT_FIELD(PF_InData, width, 252);
VT_FIELD(PF_InData, height, 256);
VT_FIELD(PF_InData, extent_hint, 260);
VT_FIELD(PF_InData, output_origin_x, 276);
VT_FIELD(PF_InData, output_origin_y, 280);
VT_FIELD(PF_InData, downsample_x, 284);
VT_FIELD(PF_InData, downsample_y, 292);
VT_FIELD(PF_InData, pixel_aspect_ratio, 300);
VT_FIELD(PF_InData, in_flags, 308);
VT_FIELD(PF_InData, global_data, 312);
VT_FIELD(PF_InData, sequence_data, 320);
VT_FIELD(PF_InData, frame_data, 328);
VT_FIELD(PF_InData, start_sampL, 336);
VT_FIELD(PF_InData, dur_sampL, 340);
VT_FIELD(PF_InData, total_sampL, 344);
VT_FIELD(PF_InData, src_snd, 352);
VT_FIELD(PF_InData, pica_basicP, 384);
VT_FIELD(PF_InData, pre_effect_source_origin_x, 392);
VT_FIELD(PF_InData, pre_effect_source_origin_y, 396);
VT_FIELD(PF_InData, shutter_phase, 400);

VT_RECORD(PF_OutData, 408, 8);
VT_FIELD(PF_OutData, my_version, 0);
VT_FIELD(PF_OutData, name, 4);
VT_FIELD(PF_OutData, global_data, 40);
VT_FIELD(PF_OutData, num_params, 48);
VT_FIELD(PF_OutData, sequence_data, 56);
VT_FIELD(PF_OutData, flat_sdata_size, 64);
VT_FIELD(PF_OutData, frame_data, 72);
VT_FIELD(PF_OutData, width, 80);
VT_FIELD(PF_OutData, height, 84);
VT_FIELD(PF_OutData, origin, 88);
VT_FIELD(PF_OutData, out_flags, 96);
VT_FIELD(PF_OutData, return_msg, 100);
VT_FIELD(PF_OutData, start_sampL, 356);
VT_FIELD(PF_OutData, dur_sampL, 360);
VT_FIELD(PF_OutData, dest_snd, 368);
VT_FIELD(PF_OutData, out_flags2, 400);

VT_RECORD(PF_UserChangedParamExtra, 4, 4);
VT_FIELD(PF_UserChangedParamExtra, param_index, 0);

VT_RECORD(PF_RenderRequest, 44, 4);
VT_FIELD(PF_RenderRequest, rect, 0);
VT_FIELD(PF_RenderRequest, field, 16);
VT_FIELD(PF_RenderRequest, channel_mask, 20);
VT_FIELD(PF_RenderRequest, preserve_rgb_of_zero_alpha, 24);
VT_FIELD(PF_RenderRequest, unused, 25);
VT_FIELD(PF_RenderRequest, reserved, 28);

VT_RECORD(PF_CheckoutResult, 76, 4);
VT_FIELD(PF_CheckoutResult, result_rect, 0);
VT_FIELD(PF_CheckoutResult, max_result_rect, 16);
VT_FIELD(PF_CheckoutResult, par, 32);
VT_FIELD(PF_CheckoutResult, solid, 40);
VT_FIELD(PF_CheckoutResult, reservedB, 41);
VT_FIELD(PF_CheckoutResult, ref_width, 44);
VT_FIELD(PF_CheckoutResult, ref_height, 48);
VT_FIELD(PF_CheckoutResult, reserved, 52);

VT_RECORD(PF_PreRenderInput, 64, 8);
VT_FIELD(PF_PreRenderInput, output_request, 0);
VT_FIELD(PF_PreRenderInput, bitdepth, 44);
VT_FIELD(PF_PreRenderInput, gpu_data, 48);
VT_FIELD(PF_PreRenderInput, what_gpu, 56);
VT_FIELD(PF_PreRenderInput, device_index, 60);

VT_RECORD(PF_PreRenderOutput, 56, 8);
VT_FIELD(PF_PreRenderOutput, result_rect, 0);
VT_FIELD(PF_PreRenderOutput, max_result_rect, 16);
VT_FIELD(PF_PreRenderOutput, solid, 32);
VT_FIELD(PF_PreRenderOutput, reserved, 33);
VT_FIELD(PF_PreRenderOutput, flags, 34);
VT_FIELD(PF_PreRenderOutput, pre_render_data, 40);
VT_FIELD(PF_PreRenderOutput, delete_pre_render_data_func, 48);

VT_RECORD(PF_PreRenderCallbacks, 16, 8);
VT_FIELD(PF_PreRenderCallbacks, checkout_layer, 0);
VT_FIELD(PF_PreRenderCallbacks, GuidMixInPtr, 8);

VT_RECORD(PF_PreRenderExtra, 24, 8);
VT_FIELD(PF_PreRenderExtra, input, 0);
VT_FIELD(PF_PreRenderExtra, output, 8);
VT_FIELD(PF_PreRenderExtra, cb, 16);

VT_RECORD(PF_SmartRenderInput, 72, 8);
VT_FIELD(PF_SmartRenderInput, output_request, 0);
VT_FIELD(PF_SmartRenderInput, bitdepth, 44);
VT_FIELD(PF_SmartRenderInput, pre_render_data, 48);
VT_FIELD(PF_SmartRenderInput, gpu_data, 56);
VT_FIELD(PF_SmartRenderInput, what_gpu, 64);
VT_FIELD(PF_SmartRenderInput, device_index, 68);

VT_RECORD(PF_SmartRenderCallbacks, 24, 8);
VT_FIELD(PF_SmartRenderCallbacks, checkout_layer_pixels, 0);
VT_FIELD(PF_SmartRenderCallbacks, checkin_layer_pixels, 8);
VT_FIELD(PF_SmartRenderCallbacks, checkout_output, 16);

VT_RECORD(PF_SmartRenderExtra, 16, 8);
VT_FIELD(PF_SmartRenderExtra, input, 0);
VT_FIELD(PF_SmartRenderExtra, cb, 8);

VT_SUITE(PF_AdvAppSuite1, 10);
VT_SLOT(PF_AdvAppSuite1, PF_SetProjectDirty, 0);
VT_SLOT(PF_AdvAppSuite1, PF_RefreshAllWindows, 5);
VT_SLOT(PF_AdvAppSuite1, PF_InfoDrawText, 6);
VT_SLOT(PF_AdvAppSuite1, PF_InfoDrawColor, 7);
VT_SLOT(PF_AdvAppSuite1, PF_InfoDrawText3, 8);
VT_SLOT(PF_AdvAppSuite1, PF_InfoDrawText3Plus, 9);

VT_SUITE(PF_EffectUISuite1, 1);
VT_SLOT(PF_EffectUISuite1, PF_SetOptionsButtonName, 0);

VT_SUITE(PF_ParamUtilsSuite1, 10);
VT_SLOT(PF_ParamUtilsSuite1, PF_UpdateParamUI, 0);

VT_SUITE(PF_WorldSuite2, 3);
VT_SLOT(PF_WorldSuite2, PF_NewWorld, 0);
VT_SLOT(PF_WorldSuite2, PF_DisposeWorld, 1);
VT_SLOT(PF_WorldSuite2, PF_GetPixelFormat, 2);

VT_SUITE(AEGP_UtilitySuite5, 31);
VT_SLOT(AEGP_UtilitySuite5, AEGP_ReportInfo, 0);
VT_SLOT(AEGP_UtilitySuite5, AEGP_RegisterWithAEGP, 8);
VT_SLOT(AEGP_UtilitySuite5, AEGP_IsScriptingAvailable, 26);
VT_SLOT(AEGP_UtilitySuite5, AEGP_ExecuteScript, 27);

VT_SUITE(AEGP_PersistentDataSuite3, 18);
VT_SLOT(AEGP_PersistentDataSuite3, AEGP_GetApplicationBlob, 0);
VT_SLOT(AEGP_PersistentDataSuite3, AEGP_DoesKeyExist, 3);
VT_SLOT(AEGP_PersistentDataSuite3, AEGP_GetString, 8);
VT_SLOT(AEGP_PersistentDataSuite3, AEGP_SetString, 13);

VT_SUITE(AEGP_MemorySuite1, 8);
VT_SLOT(AEGP_MemorySuite1, AEGP_NewMemHandle, 0);
VT_SLOT(AEGP_MemorySuite1, AEGP_FreeMemHandle, 1);
VT_SLOT(AEGP_MemorySuite1, AEGP_LockMemHandle, 2);
VT_SLOT(AEGP_MemorySuite1, AEGP_UnlockMemHandle, 3);
VT_SLOT(AEGP_MemorySuite1, AEGP_GetMemHandleSize, 4);
VT_SLOT(AEGP_MemorySuite1, AEGP_ResizeMemHandle, 5);

VT_SUITE(AEGP_PFInterfaceSuite1, 5);
VT_SLOT(AEGP_PFInterfaceSuite1, AEGP_GetEffectLayer, 0);
VT_SLOT(AEGP_PFInterfaceSuite1, AEGP_GetNewEffectForEffect, 1);
VT_SLOT(AEGP_PFInterfaceSuite1, AEGP_ConvertEffectToCompTime, 2);

VT_SUITE(AEGP_LayerSuite5, 46);
VT_SLOT(AEGP_LayerSuite5, AEGP_GetLayerSourceItem, 4);
VT_SLOT(AEGP_LayerSuite5, AEGP_GetLayerParentComp, 6);
VT_SLOT(AEGP_LayerSuite5, AEGP_GetLayerFromLayerID, 45);

VT_SUITE(AEGP_StreamSuite3, 22);
VT_SLOT(AEGP_StreamSuite3, AEGP_GetNewLayerStream, 3);
VT_SLOT(AEGP_StreamSuite3, AEGP_GetNewEffectStreamByIndex, 5);
VT_SLOT(AEGP_StreamSuite3, AEGP_DisposeStream, 7);
VT_SLOT(AEGP_StreamSuite3, AEGP_GetStreamType, 12);
VT_SLOT(AEGP_StreamSuite3, AEGP_GetNewStreamValue, 13);
VT_SLOT(AEGP_StreamSuite3, AEGP_DisposeStreamValue, 14);
VT_SLOT(AEGP_StreamSuite3, AEGP_SetStreamValue, 15);

VT_SUITE(AEGP_KeyframeSuite4, 20);
VT_SLOT(AEGP_KeyframeSuite4, AEGP_GetStreamNumKFs, 0);
VT_SLOT(AEGP_KeyframeSuite4, AEGP_GetNewKeyframeValue, 4);

VT_SUITE(AEGP_MarkerSuite1, 12);
VT_SLOT(AEGP_MarkerSuite1, AEGP_DisposeMarker, 1);
VT_SLOT(AEGP_MarkerSuite1, AEGP_GetMarkerString, 5);

VT_SUITE(AEGP_ItemSuite6, 26);
VT_SLOT(AEGP_ItemSuite6, AEGP_GetItemPixelAspectRatio, 17);

VT_SUITE(AEGP_DynamicStreamSuite4, 26);
VT_SLOT(AEGP_DynamicStreamSuite4, AEGP_GetDynamicStreamFlags, 5);
VT_SLOT(AEGP_DynamicStreamSuite4, AEGP_SetDynamicStreamFlag, 6);
VT_SLOT(AEGP_DynamicStreamSuite4, AEGP_SetStreamName, 12);
VT_SLOT(AEGP_DynamicStreamSuite4, AEGP_GetNewParentStreamRef, 16);

VT_SUITE(AEGP_EffectSuite3, 17);
VT_SLOT(AEGP_EffectSuite3, AEGP_DisposeEffect, 8);

}  // namespace vellumtide
