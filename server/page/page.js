// Starts the parts of the page. The first answer, of who the user is, sets the others going.

import { startEncoding } from "./encoding.js";
import { startLook } from "./look.js";
import { startMoney } from "./money.js";
import { startPreferences } from "./preferences.js";
import { startSorting } from "./sorting.js";
import { startTyped } from "./typed.js";
import { startWho } from "./who.js";

startLook();
startPreferences();
startTyped();
startMoney();
startSorting();
startEncoding();
startWho();
