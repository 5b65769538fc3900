#pragma once
// String-table ids of the texts the disk code hands out in its messages.
namespace arden::disks::text {

inline constexpr int kCreateNewHardDisk = 125;
inline constexpr int kInvalidDiskSize = 149;
inline constexpr int kDiskTooSmall = 150;
inline constexpr int kDiskTooLarge = 151;
inline constexpr int kLargerThan199Gb = 152;
// What a single preallocated file above 2 GB means for the host (the old text warned of
// temporary files and a slow append, which preallocating in place does not need).
inline constexpr int kSingleFileLimit = 372;
inline constexpr int kVeryLargeDisk = 154;
inline constexpr int kScsiAdapterOnIdeNode = 373;
inline constexpr int kIdeAdapterOnScsiNode = 374;
inline constexpr int kLargeForIde = 155;
inline constexpr int kSizeMustBeNumeric = 156;
inline constexpr int kFileExists = 157;
inline constexpr int kDiskAlreadyExists = 158;
inline constexpr int kMissingExternalApplication = 159;
inline constexpr int kQemuImgNotFound = 160;
inline constexpr int kCurrentDiskInformation = 174;
inline constexpr int kUnableToReadDisk = 175;

}  // namespace arden::disks::text
