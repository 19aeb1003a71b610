// What the command answers to the same questions.

import { execFileSync } from "node:child_process";
import process from "node:process";

/** The command's answers, one object a line of its output. */
export function answersOf(args, input = "") {
    const text = execFileSync(process.env.WEBI18N_COMMAND, ["--json", ...args], { input, encoding: "utf8" });
    return text.trimEnd().split("\n").map((line) => JSON.parse(line));
}
