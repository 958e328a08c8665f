#include "platform_scenes/picture.h"

#include <fstream>

namespace scenes {

bool Save(const Picture& picture, const std::vector<TextBox>& texts, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  file << "P6\n";
  for (const TextBox& text : texts) {
    file << "# text " << text.box.left << ' ' << text.box.top << ' ' << text.box.right << ' '
         << text.box.bottom << ' ' << int{text.color.red} << ' ' << int{text.color.green} << ' '
         << int{text.color.blue} << '\n';
  }
  file << picture.width << ' ' << picture.height << "\n255\n";
  for (const tiltpole::Color& color : picture.pixels) {
    file.put(static_cast<char>(color.red));
    file.put(static_cast<char>(color.green));
    file.put(static_cast<char>(color.blue));
  }
  return file.flush().good();
}

}  // namespace scenes
