#include "support/JobEvents.h"

namespace support {

Events Joined(const std::vector<Events>& stages) {
  Events all;
  for (const Events& stage : stages) all.insert(all.end(), stage.begin(), stage.end());
  return all;
}

Events RegistryAsked() {
  return {"get_REG_KEY", "RegOpen Software\\TestHost\\Configurations\\Variables\\Toolpaths 131097",
          "GetStringValue Enable Stock Model Data Directory 260", "RegClose"};
}

Events PathsConverted() {
  return {"fopen job\\BinaryPaths.tmp rb", "fopen job\\BinaryPaths.txt w",
          "fclose job\\BinaryPaths.txt", "fclose job\\BinaryPaths.tmp"};
}

Events FacetLoaded(const std::string& channel, const std::string& file) {
  return {"m_fopen QZTUTLA2 " + file + " rb",
          channel + ".Reset",
          channel + ".AddVertex 1",
          channel + ".AddVertex 2",
          channel + ".AddVertex 3",
          channel + ".AddTriangle 1",
          channel + ".Close",
          "m_fclose QZTUTLA2 " + file};
}

Events FacetPlayed() {
  return {"output.Reset", "output.AddVertex 1", "output.AddVertex 2", "output.AddVertex 3",
          "output.AddTriangle 1"};
}

Events Cancelled(int message) {
  const std::string number = std::to_string(message);
  return {"LoadMessage " + number, "ShowProgress \"message " + number + "\" 3", "IsCancelled"};
}

}  // namespace support
