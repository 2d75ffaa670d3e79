#include "glsl/prelude.h"

namespace vellumtide {
namespace {

constexpr std::string_view kTypePrelude =
    "#define AIF_FLASH_TARGET 0\n"
    "#define input uniform\n"
    "#define output \n"
    "#define bool2 bvec2\n"
    "#define bool3 bvec3\n"
    "#define bool4 bvec4\n"
    "#define int2 ivec2\n"
    "#define int3 ivec3\n"
    "#define int4 ivec4\n"
    "#define float2 vec2\n"
    "#define float3 vec3\n"
    "#define float4 vec4\n"
    "#define float2x2 mat2\n"
    "#define float3x3 mat3\n"
    "#define float4x4 mat4\n"
    "#define pixel1 float\n"
    "#define pixel2 vec2\n"
    "#define pixel3 vec3\n"
    "#define pixel4 vec4\n"
    "#define image1 sampler2D\n"
    "#define image2 sampler2D\n"
    "#define image3 sampler2D\n"
    "#define image4 sampler2D\n"
    "#define imageRef int\n"
    "#define dependent \n"
    "#define region vec4\n"
    "#define smoothStep smoothstep\n"
    "#define inverseSqrt inversesqrt\n";

constexpr std::string_view kFunctionPrelude =
    "uniform vec2 vlmk_outputPixelSize;\n"
    "uniform vec2 vlmk_texturePixelSize[vlmk__INPUT_MAX];\n"
    "varying vec4 vlmk_vertexPosition;\n"
    "uniform vec2 vlmk_compSize;\n"
    "uniform vec2 vlmk_downsamplingRate;\n"
    "vec2 pixelSize(int index){return vlmk_texturePixelSize[index];}\n"
    "vec2 pixelSize(sampler2D index){return vec2(1,1);}\n"
    "vec2 pixelSize(float argf){return vlmk_outputPixelSize;}\n"
    "vec2 pixelSize(vec2 argv){return vlmk_outputPixelSize;}\n"
    "vec2 pixelSize(vec3 argv){return vlmk_outputPixelSize;}\n"
    "vec2 pixelSize(vec4 argv){return vlmk_outputPixelSize;}\n"
    "float pixelAspectRatio(int index){return "
    "vlmk_texturePixelSize[index].x/vlmk_texturePixelSize[index].y;}\n"
    "float pixelAspectRatio(sampler2D index){return 1.;}\n"
    "float pixelAspectRatio(float argf){return vlmk_outputPixelSize.x/vlmk_outputPixelSize.y;}\n"
    "float pixelAspectRatio(vec2 argv){return vlmk_outputPixelSize.x/vlmk_outputPixelSize.y;}\n"
    "float pixelAspectRatio(vec3 argv){return vlmk_outputPixelSize.x/vlmk_outputPixelSize.y;}\n"
    "float pixelAspectRatio(vec4 argv){return vlmk_outputPixelSize.x/vlmk_outputPixelSize.y;}\n"
    "vec2 outCoord(){return vlmk_vertexPosition.xy/vlmk_downsamplingRate;}\n"
    "vec4 sample(sampler2D index, vec2 coord){return "
    "texture2D(index,coord*vlmk_downsamplingRate/vlmk_compSize) vlmk_SWIZZLE_IN;}\n"
    "vec4 sampleLinear(sampler2D index,vec2 coord){return sample(index,coord);}\n"
    "vec4 sampleNearest(sampler2D index,vec2 coord){return "
    "sample(index,floor(coord)+vec2(.5,.5));}\n"
    "vec4 nowhere(){return vec4(0,0,0,0);}\n"
    "vec4 everywhere(){return vec4(0,0,0,0);}\n"
    "vec4 transform(mat2 m, vec4 r){return vec4(m*r.xy,m*r.zw);}\n"
    "vec4 transform(mat3 m, vec4 r){return "
    "vec4(mat2(m[0][0],m[0][1],m[1][0],m[1][1])*r.xy,mat2(m[0][0],m[0][1],m[1][0],m[1][1])*r.zw)-"
    "vec4(m[2][0],m[2][1],m[2][0],m[2][1]);}\n"
    "vec4 vlmk_union(vec4 a, vec4 b){return vec4(min(a.xy,b.xy),max(a.zw,b.zw));}\n"
    "vec4 intersect(vec4 a, vec4 b){return vec4(max(a.xy,b.xy),min(a.zw,b.zw));}\n"
    "vec4 outset(vec4 a, vec2 amount){return vec4(a.xy-amount,a.zw+amount);}\n"
    "vec4 inset(vec4 a,vec2 amount){return vec4(a.xy+amount,a.zw-amount);}\n"
    "vec4 bounds(vec4 r){return r;}\n"
    "bool isEmpty(vec4 r){return (r.x >= r.z) || (r.y>=r.w);}\n"
    "vec4 dod(int i){return vec4(0,0,0,0);}\n"
    "vec4 dod(sampler2D i){return vec4(0,0,0,0);}\n";

}  // namespace

std::string_view typePrelude() {
  return kTypePrelude;
}

std::string_view functionPrelude() {
  return kFunctionPrelude;
}

}  // namespace vellumtide
