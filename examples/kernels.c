/* The kernels of the example design as the C compiler sees them: the source of its DWARF file. */

void vadd(const int* a, const int* b, int* sum, int count) {
  for (int i = 0; i < count; ++i) {
    sum[i] = a[i] + b[i];
  }
}

void scale(int* values, int factor, int count) {
  for (int i = 0; i < count; ++i) {
    const int product = values[i] * factor;
    values[i] = product;
  }
}

void fir(const int* in, int* out, const int* taps) {
  *out = in[0] * taps[0] + in[1] * taps[1] + in[2] * taps[2] + in[3] * taps[3];
}
