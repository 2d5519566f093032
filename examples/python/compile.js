// Makes a reader in Python of a description in the .ksy language:
//   node compile.js [--positions] <description> <folder>
// The reader needs the Python module kaitaistruct of the compiler's version. With --positions it
// also notes where each field stands, and reads only when it is told to.

const fs = require("fs");
const path = require("path");
const Compiler = require("kaitai-struct-compiler");
const yaml = require("yaml");

const words = process.argv.slice(2);
const positions = words[0] === "--positions";
const [description, folder] = positions ? words.slice(1) : words;

new Compiler()
  .compile("python", yaml.parse(fs.readFileSync(description, "utf8")), null, positions)
  .then((sources) => {
    fs.mkdirSync(folder, { recursive: true });
    for (const [name, source] of Object.entries(sources)) {
      fs.writeFileSync(path.join(folder, name), source);
    }
  })
  .catch((error) => {
    console.error(`${description}: ${error}`);
    process.exitCode = 1;
  });
