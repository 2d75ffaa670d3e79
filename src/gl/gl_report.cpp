#include "gl/gl_report.h"

#include <GL/glew.h>
// glu.h wants the GL header before it.
#include <GL/glu.h>

#include <cstdio>
#include <cstring>

namespace vellumtide {
namespace {

constexpr std::size_t reportSize = 1024;

void writeToStandardError(const char* text) {
  std::fputs(text, stderr);
}

ReportSink reportSink = writeToStandardError;

void reportDriverString(const char* format, GLenum name) {
  if (const GLubyte* text = glGetString(name)) reportText(format, text);
}

}  // namespace

void setReportSink(ReportSink sink) {
  reportSink = sink ? sink : writeToStandardError;
}

void reportTextV(const char* format, std::va_list arguments) {
  if (std::strlen(format) >= reportSize) {
    reportSink("_printf error ;Message too large\n");
    return;
  }
  char text[reportSize] = "";
  std::vsnprintf(text, sizeof text, format, arguments);
  reportSink(text);
}

void reportText(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  reportTextV(format, arguments);
  va_end(arguments);
}

void reportGLVersion() {
  reportText("OpenGL Version Infomation\n");
  reportDriverString("Vendor   : %s\n", GL_VENDOR);
  reportDriverString("Renderer : %s\n", GL_RENDERER);
  reportDriverString("Version  : %s\n", GL_VERSION);
  reportDriverString("Extentions : %s\n", GL_EXTENSIONS);
}

unsigned checkGLError() {
  const GLenum code = glGetError();
  if (code == GL_NO_ERROR) {
    reportText("No Error.\n");
    return 0;
  }
  const GLubyte* text = gluErrorString(code);
  reportText("OpenGL Error: %s\n", text ? reinterpret_cast<const char*>(text) : "");
  return code;
}

unsigned checkGLError(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  reportTextV(format, arguments);
  va_end(arguments);
  return checkGLError();
}

}  // namespace vellumtide
