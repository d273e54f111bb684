// What the page edit lets through, so that only page lists such as "2,5,8-56" can be typed. Rules only.
#pragma once

// Whether the edit gets the character `character` of a WM_CHAR.
[[nodiscard]] bool PageEditAcceptsCharacter(unsigned character) noexcept;

// Whether the edit gets the key-down of virtual key `key`.
[[nodiscard]] bool PageEditAcceptsKey(unsigned key) noexcept;
