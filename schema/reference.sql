-- Reference tables: currencies, regions, units, categories, warehouses, departments, accounts, methods, staff, partners.
-- Texts are nvarchar: widths count characters, and a server keeps Chinese whatever its collation is.
create table D1001 (
  hb_id nvarchar(2) not null primary key,
  hb_name nvarchar(10),
  pym nvarchar(10),
  hb_note nvarchar(20),
  hb_bw bit,
  hb_hl float
)
go
-- Trees name the parent's code in OID; 'Z' marks a top-level row.
create table D1002 (
  addr_ID nvarchar(4) not null primary key,
  addr_NAME nvarchar(16),
  addr_GL nvarchar(10),
  addr_TEL nvarchar(15),
  addr_ADDR nvarchar(40),
  addr_NOTE nvarchar(100),
  OID nvarchar(4)
)
go
create table D1003 (
  dw_id nvarchar(2) not null primary key,
  dw_name nvarchar(6),
  pym nvarchar(6),
  dw_note nvarchar(30)
)
go
-- Inserted by position: the order of the columns is fixed.
create table D1004 (
  CLASS_ID nvarchar(4) not null primary key,
  CLASS_NAME nvarchar(40),
  CLASS_NOTE nvarchar(100),
  OID nvarchar(4),
  PYM nvarchar(40)
)
go
create table D1007 (
  CK_ID nvarchar(4) not null primary key,
  CK_NAME nvarchar(16),
  PYM nvarchar(16),
  CK_GL nvarchar(10),
  CK_TEL nvarchar(15),
  CK_ADDR nvarchar(40),
  CK_NOTE nvarchar(100),
  OID nvarchar(4)
)
go
create table D1008 (
  BM_ID nvarchar(4) not null primary key,
  BM_NAME nvarchar(10),
  PYM nvarchar(10),
  BM_ZG nvarchar(8),
  BM_NOTE nvarchar(20),
  OID nvarchar(4)
)
go
-- CLASSID: 0 cash, 1 bank deposit, 2 for the system's use.
create table D1010 (
  JY_ID nvarchar(2) not null primary key,
  JY_NAME nvarchar(50),
  PYM nvarchar(50),
  CLASSID smallint,
  YH_NUM nvarchar(25),
  YH_NAME nvarchar(50),
  KM_ID nvarchar(18),
  QCMONEY float
)
go
create table D1011 (
  SEND_ID nvarchar(2) not null primary key,
  SEND_NAME nvarchar(10),
  PYM nvarchar(10)
)
go
create table D1012 (
  FF_ID nvarchar(2) not null primary key,
  FF_NAME nvarchar(30),
  PYM nvarchar(30)
)
go
-- T: has left the company.
create table D1101 (
  YW_ID nvarchar(4) not null primary key,
  YW_NAME nvarchar(20),
  PYM nvarchar(20),
  BM_ID nvarchar(4),
  TEL nvarchar(40),
  FAX nvarchar(40),
  EMAIL nvarchar(40),
  ADDR nvarchar(60),
  TC float,
  BDATE datetime,
  EDATE datetime,
  T bit,
  NOTE nvarchar(100)
)
create index IX_D1101_BM_ID on D1101 (BM_ID)
go
-- Customers. KM_IDA: salesperson; KM_IDB: the partner's own ledger account.
create table D1102 (
  KH_GYS_ID nvarchar(10) not null primary key,
  KG_NAME nvarchar(40),
  PYM nvarchar(40),
  FULL_NAME nvarchar(40),
  GRADE nvarchar(2) default N'1',
  ADDR_ID nvarchar(4) default N'01',
  SEND_ID nvarchar(2),
  KM_IDA nvarchar(18),
  KM_IDB nvarchar(18),
  BDATE datetime,
  EDATE datetime,
  FZR nvarchar(20),
  TEL nvarchar(50),
  TEL1 nvarchar(50),
  FAX nvarchar(30),
  ADDR nvarchar(100),
  EMAIL nvarchar(100),
  NOTE nvarchar(100),
  WEB nvarchar(100)
)
go
-- Suppliers, laid out as customers are. KM_IDA: the number that the account was made from.
create table D1103 (
  KH_GYS_ID nvarchar(10) not null primary key,
  KG_NAME nvarchar(40),
  PYM nvarchar(40),
  FULL_NAME nvarchar(40),
  GRADE nvarchar(2) default N'1',
  ADDR_ID nvarchar(4) default N'01',
  SEND_ID nvarchar(2),
  KM_IDA nvarchar(18),
  KM_IDB nvarchar(18),
  BDATE datetime,
  EDATE datetime,
  FZR nvarchar(20),
  TEL nvarchar(50),
  TEL1 nvarchar(50),
  FAX nvarchar(30),
  ADDR nvarchar(100),
  EMAIL nvarchar(100),
  NOTE nvarchar(100),
  WEB nvarchar(100)
)
go
-- Chart of ledger accounts: 1001… cash, 1002… bank deposits.
create table D6801 (
  km_id nvarchar(18) not null primary key,
  km_name nvarchar(50)
)
go
