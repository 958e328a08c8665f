#pragma once

// Counts how often chosen addresses are deleted. The program's operator delete keeps the memory of
// a watched address back, so that a second deletion is counted, not a crash, and no other object
// can take the address meanwhile.

namespace tiltpole::test {

class DeleteWatch {
 public:
  DeleteWatch() = default;
  ~DeleteWatch();
  DeleteWatch(const DeleteWatch&) = delete;
  DeleteWatch& operator=(const DeleteWatch&) = delete;

  // Watches an object made with new and gives it back.
  template <class T>
  T* Watch(T* object) {
    Start(object);
    return object;
  }

  // How many of the watched objects have been deleted exactly `times` times.
  int DeletedTimes(int times) const;

 private:
  void Start(void* address);
};

}  // namespace tiltpole::test
