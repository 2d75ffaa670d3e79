// What the host passes with every command: in-data, out-data and its callbacks.
#pragma once

#include <cstddef>

#include "aeapi/params.h"

namespace vellumtide {

struct PF_InteractCallbacks {
  PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time,
                           A_long time_step, A_u_long time_scale, PF_ParamDef* param);
  PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef* param);
  PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDef* def);
  PF_Err (*abort)(PF_ProgPtr effect_ref);
  PF_Err (*progress)(PF_ProgPtr effect_ref, A_long current, A_long total);
  void* register_ui;
  void* checkout_layer_audio;
  void* checkin_layer_audio;
  void* get_audio_data;
  void* reserved_str[3];
  void* reserved[10];
};

struct PF_UtilCallbacks {
  void* begin_sampling;
  void* subpixel_sample;
  void* area_sample;
  void* get_batch_func_is_deprecated;
  void* end_sampling;
  void* composite_rect;
  void* blend;
  void* convolve;
  void* copy;
  void* fill;
  void* gaussian_kernel;
  void* iterate;
  void* premultiply;
  void* premultiply_color;
  void* new_world;
  void* dispose_world;
  void* iterate_origin;
  void* iterate_lut;
  void* transfer_rect;
  void* transform_world;
  PF_Handle (*host_new_handle)(uint64_t size);
  void* (*host_lock_handle)(PF_Handle pf_handle);
  void (*host_unlock_handle)(PF_Handle pf_handle);
  void (*host_dispose_handle)(PF_Handle pf_handle);
  void* get_callback_addr;
  void* app;
  void* ansi[20];
  void* colorCB[8];
  PF_Err (*get_platform_data)(PF_ProgPtr effect_ref, PF_PlatDataID which, void* data);
  uint64_t (*host_get_handle_size)(PF_Handle pf_handle);
  void* iterate_origin_non_clip_src;
  void* iterate_generic;
  PF_Err (*host_resize_handle)(uint64_t new_sizeL, PF_Handle* handlePH);
  void* subpixel_sample16;
  void* area_sample16;
  void* fill16;
  void* premultiply_color16;
  void* iterate16;
  void* iterate_origin16;
  void* iterate_origin_non_clip_src16;
  void* get_pixel_data8;
  void* get_pixel_data16;
  A_long reserved[1];
};

struct PF_SoundWorld {
  PF_SoundFormatInfo fi;
  A_long num_samples;
  void* dataP;
};

struct SPBasicSuite {
  int32_t (*AcquireSuite)(const char* name, int32_t version, const void** suite);
  int32_t (*ReleaseSuite)(const char* name, int32_t version);
  SPBoolean (*IsEqual)(const char* token1, const char* token2);
  int32_t (*AllocateBlock)(size_t size, void** block);
  int32_t (*FreeBlock)(void* block);
  int32_t (*ReallocateBlock)(void* block, size_t newSize, void** newblock);
  int32_t (*Undefined)();
};

struct PF_InData {
  PF_InteractCallbacks inter;
  PF_UtilCallbacks* utils;
  PF_ProgPtr effect_ref;
  PF_Quality quality;
  PF_SpecVersion version;
  A_long serial_num;
  A_AppID appl_id;
  A_long num_params;
  A_long reserved;
  A_long what_cpu;
  A_long what_fpu;
  A_long current_time;
  A_long time_step;
  A_long total_time;
  A_long local_time_step;
  A_u_long time_scale;
  PF_Field field;
  PF_Fixed shutter_angle;
  A_long width;
  A_long height;
  PF_Rect extent_hint;
  A_long output_origin_x;
  A_long output_origin_y;
  PF_RationalScale downsample_x;
  PF_RationalScale downsample_y;
  PF_RationalScale pixel_aspect_ratio;
  PF_InFlags in_flags;
  PF_Handle global_data;
  PF_Handle sequence_data;
  PF_Handle frame_data;
  A_long start_sampL;
  A_long dur_sampL;
  A_long total_sampL;
  PF_SoundWorld src_snd;
  SPBasicSuite* pica_basicP;
  A_long pre_effect_source_origin_x;
  A_long pre_effect_source_origin_y;
  PF_Fixed shutter_phase;
};

struct PF_OutData {
  A_u_long my_version;
  A_char name[32];
  PF_Handle global_data;
  A_long num_params;
  PF_Handle sequence_data;
  A_long flat_sdata_size;
  PF_Handle frame_data;
  A_long width;
  A_long height;
  PF_Point origin;
  PF_OutFlags out_flags;
  A_char return_msg[256];
  A_long start_sampL;
  A_long dur_sampL;
  PF_SoundWorld dest_snd;
  PF_OutFlags2 out_flags2;
};

struct PF_UserChangedParamExtra {
  PF_ParamIndex param_index;
};

}  // namespace vellumtide
