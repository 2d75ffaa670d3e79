uniform sampler2D tex;
uniform float width;
uniform float height;
varying vec2 v_texcoord;

#define TAP(t) \
  sum += texture2D(tex, clamp(coord + 12.0 * sqrt(t / 24.0) * \
      vec2(cos(t * 2.39996323), sin(t * 2.39996323)), vec2(0.5), size - 0.5) / size);

void main()
{
  vec2 size = vec2(width, height);
  vec2 coord = v_texcoord * size;
  vec4 sum = vec4(0.0);
  TAP(0.5) TAP(1.5) TAP(2.5) TAP(3.5) TAP(4.5) TAP(5.5)
  TAP(6.5) TAP(7.5) TAP(8.5) TAP(9.5) TAP(10.5) TAP(11.5)
  TAP(12.5) TAP(13.5) TAP(14.5) TAP(15.5) TAP(16.5) TAP(17.5)
  TAP(18.5) TAP(19.5) TAP(20.5) TAP(21.5) TAP(22.5) TAP(23.5)
  gl_FragColor = sum / 24.0;
}
