// The yardstick: a static program that does nothing, which is the least that a request can cost.
int main(void) {
  return 0;
}
