// The program a floor's library is linked whole into, with the floors below it alone: it runs
// nothing, it only has to link (cmake/floors.cmake).
int main() {
  return 0;
}
