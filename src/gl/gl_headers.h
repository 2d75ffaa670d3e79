#pragma once

// GLEW declares all of OpenGL and must come before any other GL header.
#include <GL/glew.h>
