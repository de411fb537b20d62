// The page System. For now: waiting for the camera.

/** @param {boolean} isReset */
export function awaitRestart(isReset) {
  void isReset;
}

/** @param {number} port */
export function awaitMove(port) {
  void port;
}

/** @param {HTMLElement} page */
export function show(page) {
  void page;
}
