"use strict";

// Runs before the page's body is there: what the script takes over is not laid out twice.
document.documentElement.dataset.state = "starting";
