uniform sampler2D tex;
varying vec2 v_texcoord;

void main()
{
  vec4 color = texture2D(tex, v_texcoord);
  float light = dot(color.rgb, vec3(0.2126, 0.7152, 0.0722));
  vec3 rgb = mix(vec3(light), color.rgb, 1.3) * vec3(1.05, 0.98, 0.9) + 0.02;
  gl_FragColor = vec4(clamp(rgb, 0.0, 1.0), color.a);
}
