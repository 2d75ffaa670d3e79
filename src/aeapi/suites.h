// The host's suites: tables of function pointers, one struct a table. Slots this system never calls
// are kept as unused pointers so that the slot numbers hold.
#pragma once

#include "aeapi/params.h"
#include "aeapi/stream_values.h"

namespace vellumtide {

struct PF_AdvAppSuite1 {
  static constexpr const char* kName = "PF AE Adv App Suite";
  static constexpr int32_t kVersion = 1;

  PF_Err (*PF_SetProjectDirty)();
  void* unused1[4];
  PF_Err (*PF_RefreshAllWindows)();
  PF_Err (*PF_InfoDrawText)(const A_char* line1Z0, const A_char* line2Z0);
  PF_Err (*PF_InfoDrawColor)(PF_Pixel color);
  PF_Err (*PF_InfoDrawText3)(const A_char* line1Z0, const A_char* line2Z0, const A_char* line3Z0);
  PF_Err (*PF_InfoDrawText3Plus)(const A_char* line1Z0, const A_char* line2_jrZ0,
                                 const A_char* line2_jlZ0, const A_char* line3_jrZ0,
                                 const A_char* line3_jlZ0);
};

struct PF_EffectUISuite1 {
  static constexpr const char* kName = "PF Effect UI Suite";
  static constexpr int32_t kVersion = 1;

  PF_Err (*PF_SetOptionsButtonName)(PF_ProgPtr effect_ref, const A_char* nameZ);
};

struct PF_ParamUtilsSuite1 {
  static constexpr const char* kName = "PF Param Utils Suite";
  static constexpr int32_t kVersion = 2;

  PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                             const PF_ParamDef* defP);
  void* unused1[9];
};

struct PF_WorldSuite2 {
  static constexpr const char* kName = "PF World Suite";
  static constexpr int32_t kVersion = 2;

  PF_Err (*PF_NewWorld)(PF_ProgPtr effect_ref, A_long widthL, A_long heightL, PF_Boolean clear_pixB,
                        PF_PixelFormat pixel_format, PF_EffectWorld* worldP);
  PF_Err (*PF_DisposeWorld)(PF_ProgPtr effect_ref, PF_EffectWorld* worldP);
  PF_Err (*PF_GetPixelFormat)(const PF_EffectWorld* worldP, PF_PixelFormat* pixel_formatP);
};

struct AEGP_UtilitySuite5 {
  static constexpr const char* kName = "AEGP Utility Suite";
  static constexpr int32_t kVersion = 11;

  A_Err (*AEGP_ReportInfo)(AEGP_PluginID aegp_plugin_id, const A_char* info_stringZ);
  void* unused1[7];
  A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon global_refcon, const A_char* plugin_nameZ,
                                 AEGP_PluginID* plugin_id);
  void* unused9[17];
  A_Err (*AEGP_IsScriptingAvailable)(A_Boolean* outAvailablePB);
  A_Err (*AEGP_ExecuteScript)(AEGP_PluginID inPlugin_id, const A_char* inScriptZ,
                              A_Boolean platform_encodingB, AEGP_MemHandle* outResultPH0,
                              AEGP_MemHandle* outErrorStringPH0);
  void* unused28[3];
};

struct AEGP_PersistentDataSuite3 {
  static constexpr const char* kName = "AEGP Persistent Data Suite";
  static constexpr int32_t kVersion = 3;

  A_Err (*AEGP_GetApplicationBlob)(AEGP_PersistentBlobH* blobPH);
  void* unused1[2];
  A_Err (*AEGP_DoesKeyExist)(AEGP_PersistentBlobH blobH, const A_char* section_keyZ,
                             const A_char* value_keyZ, A_Boolean* existsPB);
  void* unused4[4];
  A_Err (*AEGP_GetString)(AEGP_PersistentBlobH blobH, const A_char* section_keyZ,
                          const A_char* value_keyZ, const A_char* defaultZ0, A_u_long buf_sizeLu,
                          A_char* bufZ, A_u_long* actual_buf_sizeLu0);
  void* unused9[4];
  A_Err (*AEGP_SetString)(AEGP_PersistentBlobH blobH, const A_char* section_keyZ,
                          const A_char* value_keyZ, const A_char* strZ);
  void* unused14[4];
};

struct AEGP_MemorySuite1 {
  static constexpr const char* kName = "AEGP Memory Suite";
  static constexpr int32_t kVersion = 1;

  A_Err (*AEGP_NewMemHandle)(AEGP_PluginID plugin_id, const A_char* whatZ, AEGP_MemSize size,
                             AEGP_MemFlag flags, AEGP_MemHandle* memPH);
  A_Err (*AEGP_FreeMemHandle)(AEGP_MemHandle memH);
  A_Err (*AEGP_LockMemHandle)(AEGP_MemHandle memH, void** ptr_to_ptr);
  A_Err (*AEGP_UnlockMemHandle)(AEGP_MemHandle memH);
  A_Err (*AEGP_GetMemHandleSize)(AEGP_MemHandle memH, AEGP_MemSize* sizeP);
  A_Err (*AEGP_ResizeMemHandle)(const A_char* whatZ, AEGP_MemSize new_size, AEGP_MemHandle memH);
  void* unused6[2];
};

struct AEGP_PFInterfaceSuite1 {
  static constexpr const char* kName = "AEGP PF Interface Suite";
  static constexpr int32_t kVersion = 1;

  A_Err (*AEGP_GetEffectLayer)(PF_ProgPtr effect_pp_ref, AEGP_LayerH* layerPH);
  A_Err (*AEGP_GetNewEffectForEffect)(AEGP_PluginID aegp_plugin_id, PF_ProgPtr effect_pp_ref,
                                      AEGP_EffectRefH* effect_refPH);
  A_Err (*AEGP_ConvertEffectToCompTime)(PF_ProgPtr effect_pp_ref, A_long what_timeL,
                                        A_u_long time_scaleLu, A_Time* comp_timePT);
  void* unused3[2];
};

struct AEGP_LayerSuite5 {
  static constexpr const char* kName = "AEGP Layer Suite";
  static constexpr int32_t kVersion = 11;

  void* unused0[4];
  A_Err (*AEGP_GetLayerSourceItem)(AEGP_LayerH layerH, AEGP_ItemH* source_itemPH);
  void* unused5[1];
  A_Err (*AEGP_GetLayerParentComp)(AEGP_LayerH layerH, AEGP_CompH* compPH);
  void* unused7[38];
  A_Err (*AEGP_GetLayerFromLayerID)(AEGP_CompH parent_compH, AEGP_LayerIDVal id,
                                    AEGP_LayerH* layerPH);
};

struct AEGP_StreamSuite3 {
  static constexpr const char* kName = "AEGP Stream Suite";
  static constexpr int32_t kVersion = 8;

  void* unused0[3];
  A_Err (*AEGP_GetNewLayerStream)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                  AEGP_LayerStream which_stream, AEGP_StreamRefH* streamPH);
  void* unused4[1];
  A_Err (*AEGP_GetNewEffectStreamByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH,
                                          PF_ParamIndex param_index, AEGP_StreamRefH* streamPH);
  void* unused6[1];
  A_Err (*AEGP_DisposeStream)(AEGP_StreamRefH streamH);
  void* unused8[4];
  A_Err (*AEGP_GetStreamType)(AEGP_StreamRefH streamH, AEGP_StreamType* stream_typeP);
  A_Err (*AEGP_GetNewStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                  AEGP_LTimeMode time_mode, const A_Time* timePT,
                                  A_Boolean pre_expressionB, AEGP_StreamValue2* valueP);
  A_Err (*AEGP_DisposeStreamValue)(AEGP_StreamValue2* valueP);
  A_Err (*AEGP_SetStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                               AEGP_StreamValue2* valueP);
  void* unused16[6];
};

struct AEGP_KeyframeSuite4 {
  static constexpr const char* kName = "AEGP Keyframe Suite";
  static constexpr int32_t kVersion = 4;

  A_Err (*AEGP_GetStreamNumKFs)(AEGP_StreamRefH streamH, A_long* num_kfsPL);
  void* unused1[3];
  A_Err (*AEGP_GetNewKeyframeValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                    AEGP_KeyframeIndex key_index, AEGP_StreamValue2* valueP);
  void* unused5[15];
};

struct AEGP_MarkerSuite1 {
  static constexpr const char* kName = "AEGP Marker Suite";
  static constexpr int32_t kVersion = 1;

  void* unused0[1];
  A_Err (*AEGP_DisposeMarker)(AEGP_MarkerValP markerP);
  void* unused2[3];
  A_Err (*AEGP_GetMarkerString)(AEGP_PluginID aegp_plugin_id, AEGP_ConstMarkerValP markerP,
                                AEGP_MarkerStringType strType, AEGP_MemHandle* unicodePH);
  void* unused6[6];
};

struct AEGP_ItemSuite6 {
  static constexpr const char* kName = "AEGP Item Suite";
  static constexpr int32_t kVersion = 10;

  void* unused0[17];
  A_Err (*AEGP_GetItemPixelAspectRatio)(AEGP_ItemH itemH, A_Ratio* pix_aspect_ratioPRt);
  void* unused18[8];
};

struct AEGP_DynamicStreamSuite4 {
  static constexpr const char* kName = "AEGP Dynamic Stream Suite";
  static constexpr int32_t kVersion = 5;

  void* unused0[5];
  A_Err (*AEGP_GetDynamicStreamFlags)(AEGP_StreamRefH streamH, AEGP_DynStreamFlags* stream_flagsP);
  A_Err (*AEGP_SetDynamicStreamFlag)(AEGP_StreamRefH streamH, AEGP_DynStreamFlags one_flag,
                                     A_Boolean undoableB, A_Boolean setB);
  void* unused7[5];
  A_Err (*AEGP_SetStreamName)(AEGP_StreamRefH streamH, const A_UTF16Char* nameZ);
  void* unused13[3];
  A_Err (*AEGP_GetNewParentStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                      AEGP_StreamRefH* parent_streamPH);
  void* unused17[9];
};

struct AEGP_EffectSuite3 {
  static constexpr const char* kName = "AEGP Effect Suite";
  static constexpr int32_t kVersion = 3;

  void* unused0[8];
  A_Err (*AEGP_DisposeEffect)(AEGP_EffectRefH effect_refH);
  void* unused9[8];
};

}  // namespace vellumtide
