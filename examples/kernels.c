/* The kernels of the example design as the C compiler sees them: the source of its DWARF file. */

void vadd(const int* a, const int* b, int* sum, int count) {
  for (int i = 0; i < count; ++i) {
    sum[i] = a[i] + b[i];
  }
}

void scale(float* values, float factor, int count) {
  for (int i = 0; i < count; ++i) {
    values[i] *= factor;
  }
}
