// The published contract, held against other people's readers of OpenAPI and JSON Schema.

import assert from 'node:assert/strict';
import { readFile, readdir } from 'node:fs/promises';
import test from 'node:test';
import { Validator } from '@seriousme/openapi-schema-validator';
import Ajv from 'ajv';

const protocol = new URL('../../docs/protocol/', import.meta.url);
const read = async (name) => JSON.parse(await readFile(new URL(name, protocol), 'utf8'));
const filesOf = async (folder, ending) => (await readdir(new URL(folder, protocol)))
  .filter((name) => name.endsWith(ending));

const documents = await filesOf('.', '.openapi.json');
const schemas = new Map(await Promise.all((await filesOf('schemas/', '.json'))
  .map(async (name) => [name.replace('.json', ''), await read(`schemas/${name}`)])));
const examples = await filesOf('examples/', '.json');

test('there are three documents', () => {
  assert.deepEqual(documents.sort(),
    ['ad-service.openapi.json', 'display.openapi.json', 'plug-in.openapi.json']);
});

/** Knows the schemas that the documents refer to. */
function newValidator() {
  const validator = new Validator();
  for (const [name, schema] of schemas) validator.addSpecRef(schema, `schemas/${name}.json`);
  return validator;
}

for (const name of documents) {
  test(`${name} is OpenAPI 3.1`, async () => {
    const document = await read(name);
    const validator = newValidator();
    const { valid, errors } = await validator.validate(document);
    assert.ok(valid, JSON.stringify(errors, null, 2));
    assert.equal(validator.version, '3.1');
  });

  test(`${name} without an answer is not OpenAPI 3.1`, async () => {
    const document = await read(name);
    const [path] = Object.values(document.paths);
    path.post.responses['2XX'] = { content: {} }; // has no description
    assert.equal((await newValidator().validate(document)).valid, false);
  });
}

/** Knows all the schemas, and refuses words that it does not know. */
function newReader() {
  const reader = new Ajv({ strictSchema: true, strictTypes: false, allErrors: true });
  reader.addVocabulary(['x-type', 'x-unit']); // for people
  for (const [name, schema] of schemas) reader.addSchema(schema, `${name}.json`);
  return reader;
}

for (const name of schemas.keys()) {
  test(`schema ${name} is JSON Schema without unknown words`, () => {
    assert.doesNotThrow(() => newReader().getSchema(`${name}.json`));
  });
}

for (const file of examples) {
  const name = file.replace('.json', '').replace(/-.*/, '');
  test(`example ${file} keeps to schema ${name}`, async () => {
    const judge = newReader().getSchema(`${name}.json`);
    assert.ok(judge(await read(`examples/${file}`)), JSON.stringify(judge.errors, null, 2));
  });
}

test('each schema but those of the sample shop has an example', () => {
  const shown = new Set(examples.map((file) => file.replace('.json', '').replace(/-.*/, '')));
  assert.deepEqual([...schemas.keys()].filter((name) => !shown.has(name)).sort(),
    ['SampleImageId', 'SampleReceipt']);
});

test('examples of pictures and receipts are in the forms of the sample shop', async () => {
  const keeps = (schema, value) => newReader().getSchema(`${schema}.json`)(value);
  const request = await read('examples/getImage.json');
  for (const id of Object.values(request.data)) assert.ok(keeps('SampleImageId', id));
  for (const file of ['ImageData', 'ImageData-missing'])
    assert.ok(keeps('SampleImageId', (await read(`examples/${file}.json`)).id), file);
  for (const file of ['UpdateDocument', 'UpdateDocument-paid'])
    assert.ok(keeps('SampleReceipt', await read(`examples/${file}.json`)), file);
});

test('further settings of the touch interface may have any name', async () => {
  const judge = newReader().getSchema('Configure.json');
  const settings = await read('examples/Configure-touch.json');
  assert.ok(judge({ ...settings, 'View.QmlStyle:': 1, 'View.QmlStyle:two\nlines': null }));
  assert.ok(!judge({ ...settings, 'View.Style:anything': 1 }));
});
