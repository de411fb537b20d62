// The snapshots' settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct SnapshotSettings {
  std::uint8_t reserved0;
  std::uint8_t ftp_enable;  // snapshots go to the FTP server: 0 no, 1 yes
  std::uint8_t reserved1[30];
};
static_assert(sizeof(SnapshotSettings) == 32 && std::is_trivially_copyable_v<SnapshotSettings>);

}  // namespace camera
