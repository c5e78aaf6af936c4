#pragma once

/// The paw frames of a bitmap: the frames of each kind start at its number.
namespace pobblewig::BuddyPaws {

inline constexpr int none = 0;
inline constexpr int typing = 1;
inline constexpr int typingFrames = 2;
inline constexpr int petting = typing + typingFrames;
inline constexpr int pettingFrames = 4;

} // namespace pobblewig::BuddyPaws
