uniform sampler2D tex;
uniform float width;
uniform float height;
varying vec2 v_texcoord;

void main()
{
  vec2 size = vec2(width, height);
  vec2 coord = v_texcoord * size;
  vec4 sum = vec4(0.0);
  for (int i = 0; i < 24; ++i)
  {
    float t = float(i) + 0.5;
    float angle = t * 2.39996323;
    vec2 away = 12.0 * sqrt(t / 24.0) * vec2(cos(angle), sin(angle));
    sum += texture2D(tex, clamp(coord + away, vec2(0.5), size - 0.5) / size);
  }
  gl_FragColor = sum / 24.0;
}
